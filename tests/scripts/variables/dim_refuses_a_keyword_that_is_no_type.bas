dim a as title   # expect error 1: Syntax error
print "on"       # expect: on
