call max(1, 2)
call len("abc")
call left("abc")   # expect error 24: Incorrect number of function parameters
print "on"         # expect: on
