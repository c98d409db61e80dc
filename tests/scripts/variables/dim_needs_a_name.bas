dim 5        # expect error 1: Syntax error
print "on"   # expect: on
