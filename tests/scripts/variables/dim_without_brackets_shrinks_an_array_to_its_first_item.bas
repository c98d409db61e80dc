dim a[10]
a[0] = "first"
a[9] = "last"
dim a
print ubound("a")   # expect: 1
print a             # expect: first
