x[0] = 5
print x             # expect: 5.000000
