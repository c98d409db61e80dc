r = findfiles("box/*.xyz", 0)
print "["; r; "]"   # expect: []
print ubound("r")   # expect: 0
r = findfiles("nowhere/*", 0)
print ubound("r")   # expect: 0
