dim a[2] : dim b[3]
print ubound("a"); ubound("b")   # expect: 23
dim c print "next"               # expect: next
if 1 = 1 then dim d[4] endif
print ubound("d")                # expect: 4
global E[2] : E[1] = "e"
print E[1]                       # expect: e
