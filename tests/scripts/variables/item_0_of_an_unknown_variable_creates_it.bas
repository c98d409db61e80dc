a[0] = 5
print a   # expect: 5.000000
b[-3] = 6
print b   # expect: 6.000000
