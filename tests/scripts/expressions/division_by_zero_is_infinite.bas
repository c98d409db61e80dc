print 1 / 0         # expect: inf
print -1 / 0        # expect: -inf
print 0 / 0         # expect: nan
