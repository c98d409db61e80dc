dim a as unicode   # expect error 1: Syntax error
print "on"         # expect: on
