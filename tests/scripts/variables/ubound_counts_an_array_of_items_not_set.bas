dim a[2]
print ubound("a")   # expect: 2
