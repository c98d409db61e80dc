print -0       # expect: -0.000000
print 0        # expect: 0.000000
print 0 * -1   # expect: -0.000000
