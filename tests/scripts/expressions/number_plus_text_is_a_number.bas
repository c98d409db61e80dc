print 1 + "2"       # expect: 3.000000
print 1 + " 2.5 apples"  # expect: 3.500000
print 1 + "abc"     # expect: 1.000000
print 6 * "2"       # expect: 12.000000
