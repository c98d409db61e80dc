for i = 5 to 1
  print "body"
next
print i             # expect: 5.000000
