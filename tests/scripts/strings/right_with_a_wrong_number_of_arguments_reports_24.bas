x = right("abc")         # expect error 24: Incorrect number of function parameters
x = right("abc", 1, 2)   # expect error 24: Incorrect number of function parameters
x = right()              # expect error 24: Incorrect number of function parameters
print "on"               # expect: on
