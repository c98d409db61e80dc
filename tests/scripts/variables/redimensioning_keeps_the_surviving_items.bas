dim a[2]
a[0] = "first"
a[1] = "second"
dim a[4]
print a[0]; " "; a[1]; " ["; a[2]; a[3]; "]"   # expect: first second []
dim a[1]
print ubound("a"); a                           # expect: 1first
dim a[2]
print "["; a[1]; "]"                           # expect: []
