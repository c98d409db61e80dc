print 1 + Nothing   # expect: 1.000000
