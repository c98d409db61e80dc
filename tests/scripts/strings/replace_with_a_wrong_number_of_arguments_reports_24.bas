x = replace("abc", "b")             # expect error 24: Incorrect number of function parameters
x = replace("abc", "b", "c", "d")   # expect error 24: Incorrect number of function parameters
x = replace()                       # expect error 24: Incorrect number of function parameters
print "on"                          # expect: on
