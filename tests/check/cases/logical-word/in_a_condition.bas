a = 5
if a mod 2 = 1 then  # problem: logical-word@6
  print "odd"
endif
