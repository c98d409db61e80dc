x = mid("abc", 1)         # expect error 24: Incorrect number of function parameters
x = mid("abc", 1, 2, 3)   # expect error 24: Incorrect number of function parameters
x = mid()                 # expect error 24: Incorrect number of function parameters
print "on"                # expect: on
