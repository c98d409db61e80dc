dim a[2]
a[0] = "x"
dim b[4]
b[3] = a
print ubound("b")   # expect: 2
print b[0]          # expect: x
