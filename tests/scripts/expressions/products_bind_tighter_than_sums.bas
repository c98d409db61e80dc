print 2 + 3 * 4     # expect: 14.000000
print 20 - 12 / 4   # expect: 17.000000
print (2 + 3) * 4   # expect: 20.000000
print 2 * 3^2       # expect: 18.000000
