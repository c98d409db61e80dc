print 1 / 1e30    # expect: 0.000000
print -1 / 1e30   # expect: -0.000000
print 1 / 1e300   # expect: 0.000000
