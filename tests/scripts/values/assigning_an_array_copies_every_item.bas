dim a[3]
a[0] = 1
a[1] = "two"
a[2] = int(3)
b = a
a[1] = "changed"
print ubound("b")                  # expect: 3
print b[0]; " "; b[1]; " "; b[2]   # expect: 1.000000 two 3
