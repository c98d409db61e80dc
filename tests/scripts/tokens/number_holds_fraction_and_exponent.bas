print 1.5           # expect: 1.500000
print 1e3           # expect: 1000.000000
print 25e-1         # expect: 24.000000
print 1e+3          # expect: 4.000000
