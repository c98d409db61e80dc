dim a[2]
a[0] = 1
a[1] = "two"
print a[0]; a[1]    # expect: 1.000000two
print ubound("a")   # expect: 2
