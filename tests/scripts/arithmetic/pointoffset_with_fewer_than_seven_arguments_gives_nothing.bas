r = pointoffset(0, 0, 1, 0, 0, 0)
print "["; r; "]"   # expect: []
print ubound("r")   # expect: 0
r = pointoffset()
print "["; r; "]"   # expect: []
