for i = 2 to 1
  open "made.txt"
  for j = 1 to 2
    print "inner"
  next
  print "outer"
next
print "on"          # expect: on
