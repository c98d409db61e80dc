dim a as nosuch   # expect error 1: Syntax error
print "on"        # expect: on
