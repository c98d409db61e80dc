x = 5
dim x as integer
print "["; x; "]"   # expect: []
print ubound("x")   # expect: 0
