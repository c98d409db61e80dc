# The line end was read as the operand, so the position is behind it.
# expect: 2.000000
print 2 +
print "on"          # expect: on
# expect error 0: Error loading resource string.
