r = pointoffset(0, 0, 1, 0, 0, 0, 1)
print ubound("r")   # expect: 2
