x = left("abc")     # expect error 24: Incorrect number of function parameters
x = len()           # expect error 24: Incorrect number of function parameters
x = max(1)          # expect error 24: Incorrect number of function parameters
print "on"          # expect: on
