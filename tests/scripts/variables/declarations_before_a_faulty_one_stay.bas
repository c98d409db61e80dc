dim a[3], b[0]      # expect error 32: Incorrect array size
print ubound("a")   # expect: 3
