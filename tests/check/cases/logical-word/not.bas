a = 1
if not a = 1 then  # problem: logical-word@4
  print "y"
endif
