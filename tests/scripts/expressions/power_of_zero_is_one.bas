print 2^0           # expect: 1.000000
print 0^0           # expect: 1.000000
