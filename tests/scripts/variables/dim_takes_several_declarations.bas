dim a[2], b, c[4]
print ubound("a"); ubound("b"); ubound("c")   # expect: 204
