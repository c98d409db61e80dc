do while 1 = 2
  print "body"
loop
print "on"          # expect: on
