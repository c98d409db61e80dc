dim a[5]
a[-1] = 1   # expect error 36: Array index is out of bounds
