x = nope.colour   # expect error 37: Undefined variable
print "on"        # expect: on
