dim a[3]
dim a[15999]
print ubound("a")   # expect: 15999
