return       # expect error 14: Incorrect location of the RETURN statement
print "on"   # expect: on
