print 2 ^ 1e9                               # expect: inf
print 1 ^ 1e18                              # expect: 1.000000
print 0.5 ^ 1e12                            # expect: 0.000000
print format(1.0000001 ^ 1e7, "%.5f")       # expect: 2.71828
print format(1.0000001 ^ 1000000, "%.6f")   # expect: 1.105171
print -1 ^ 1000001                          # expect: -1.000000
print -1 ^ 2e15                             # expect: 1.000000
