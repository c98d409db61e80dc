print 2^2^3         # expect: 256.000000
print (2^2)^3       # expect: 64.000000
