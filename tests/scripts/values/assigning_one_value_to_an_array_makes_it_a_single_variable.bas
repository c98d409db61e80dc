dim a[3]
a[1] = "second"
a = 5
print ubound("a")   # expect: 1
print a             # expect: 5.000000
