a = 1
if a = 1 then
  print "1"
else if a = 2 then
  print "2"
endif endif
