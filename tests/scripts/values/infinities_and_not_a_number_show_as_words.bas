print 1 / 0        # expect: inf
print -1 / 0       # expect: -inf
print 0 / 0        # expect: nan
print -(0 / 0)     # expect: nan
x = 1 / 0
print x - x        # expect: nan
print 1e308 * 10   # expect: inf
