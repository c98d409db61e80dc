x = left("abc")         # expect error 24: Incorrect number of function parameters
x = left("abc", 1, 2)   # expect error 24: Incorrect number of function parameters
x = left()              # expect error 24: Incorrect number of function parameters
print "on"              # expect: on
