x = getname()   # expect error 24: Incorrect number of function parameters
print "on"      # expect: on
