x = format(1)            # expect error 24: Incorrect number of function parameters
x = format(1, "%d", 2)   # expect error 24: Incorrect number of function parameters
x = format()             # expect error 24: Incorrect number of function parameters
print "on"               # expect: on
