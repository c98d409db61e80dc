print 0.0000004     # expect: 0.000000
print 0.0000006     # expect: 0.000001
print 0 - 0.0000001  # expect: -0.000000
print 0.9999996     # expect: 1.000000
