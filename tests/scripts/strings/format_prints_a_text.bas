print format("abc", "%s")       # expect: abc
print format("abc", "[%6s]")    # expect: [   abc]
print format("abc", "[%-6s]")   # expect: [abc   ]
print format("abc", "%.2s")     # expect: ab
print format("äöü", "[%5s]")    # expect: [  äöü]
print format("", "[%s]")        # expect: []
