dim a[0]            # expect error 32: Incorrect array size
print ubound("a")   # expect: 0
