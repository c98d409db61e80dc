dim a[0.9]   # expect error 32: Incorrect array size
