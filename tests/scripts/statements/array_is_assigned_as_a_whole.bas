dim a[3]
a[0] = 1
a[1] = 2
b = a
print ubound("b")   # expect: 3
b[0] = 9
print a[0]; b[0]; b[1]  # expect: 1.0000009.0000002.000000
