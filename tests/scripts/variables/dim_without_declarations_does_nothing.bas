dim
dim          # counter
print "on"   # expect: on
