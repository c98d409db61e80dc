print 1^1e15        # expect: 1.000000
print 2^1e15        # expect: inf
