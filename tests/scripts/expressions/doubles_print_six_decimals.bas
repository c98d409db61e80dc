print 0.1 + 0.2     # expect: 0.300000
print 2 / 3         # expect: 0.666667
print 1e3 * 1e3     # expect: 1000000.000000
print 123456789012  # expect: 123456789012.000000
