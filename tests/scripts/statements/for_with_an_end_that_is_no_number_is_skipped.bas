for i = 1 to 0 / 0
  print "body"
next
for i = 0 / 0 to 1
  print "body"
next
print "on"          # expect: on
