dim a[3]
print ubound("a")   # expect: 3
dim A[5]
print ubound("a")   # expect: 5
