do while 1 = 2
  do while 1 = 1
    print "inner"
  loop
  print "outer"
loop
print "on"          # expect: on
