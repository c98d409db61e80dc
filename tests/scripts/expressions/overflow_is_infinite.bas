print 1e308 * 10    # expect: inf
print -1e308 * 10   # expect: -inf
