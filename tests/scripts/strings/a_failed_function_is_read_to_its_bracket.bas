x = "[" + left("abc") + "]"   # expect error 24: Incorrect number of function parameters
print x                       # expect: []
