x = max(1)   # expect error 24: Incorrect number of function parameters
x = min(1)   # expect error 24: Incorrect number of function parameters
print "on"   # expect: on
