x = abs(1 2)   # expect error 22: Incorrect function call
print "on"     # expect: on
