for i = 1 to nope
  print "skipped"
next
print "on"          # expect: on
