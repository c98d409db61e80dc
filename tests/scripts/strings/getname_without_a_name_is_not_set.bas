print "["; getname("file"); "]"   # expect: []
print "["; getname("a/b"); "]"    # expect: []
print "["; getname("a\"); "]"     # expect: []
print "["; getname(""); "]"       # expect: []
x = getname("file")
print ubound("x")                 # expect: 0
y = x + 1                         # expect error 18: Unexpected operator
