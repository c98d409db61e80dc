dim a[5]
dim b[2]
b[0] = "x"
b[1] = "y"
a[4] = b
print ubound("a")   # expect: 2
print a[0]; a[1]    # expect: xy
