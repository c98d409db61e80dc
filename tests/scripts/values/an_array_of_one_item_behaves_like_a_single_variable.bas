dim a[1]
a[0] = 4
a = 5
print a                 # expect: 5.000000
print a[0]              # expect: 5.000000
dim b[3]
b[0] = 1
b[1] = 2
b[0] = a
print ubound("b")       # expect: 3
print b[0]; " "; b[1]   # expect: 5.000000 2.000000
