print 2.5             # expect: 2.500000
print 3               # expect: 3.000000
print -0.25           # expect: -0.250000
print 0.1             # expect: 0.100000
print 1e3             # expect: 1000.000000
print 123456789.125   # expect: 123456789.125000
print -7              # expect: -7.000000
