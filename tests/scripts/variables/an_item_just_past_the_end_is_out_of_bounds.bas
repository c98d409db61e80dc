dim a[5]
a[4] = "last"
a[5] = 1            # expect error 36: Array index is out of bounds
print a[4]          # expect: last
print ubound("a")   # expect: 5
