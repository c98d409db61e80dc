print 2^1           # expect: 2.000000
print 2^2           # expect: 4.000000
print 2^3           # expect: 8.000000
print 10^6          # expect: 1000000.000000
