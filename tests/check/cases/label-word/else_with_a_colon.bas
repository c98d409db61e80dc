a = 1
if a = 1 then
  print "1"
else:  # problem: label-word@1
  print "2"
endif
