dim a[3]
a[0] = "first"
a[1] = "second"
dim a as string
print ubound("a")             # expect: 3
print "["; a[0]; "] "; a[1]   # expect: [] second
