print "["; getpath("file"); "]"    # expect: []
print "["; getpath("a/b"); "]"     # expect: []
print "["; getpath("\file"); "]"   # expect: []
print "["; getpath(""); "]"        # expect: []
x = getpath("file")
print ubound("x")                  # expect: 0
