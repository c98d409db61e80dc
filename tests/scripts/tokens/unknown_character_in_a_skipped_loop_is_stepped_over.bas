for i = 2 to 1
  _ . \ `
next
print "on"          # expect: on
