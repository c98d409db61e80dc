x = (nope)          # expect error 1: Syntax error
print "on"          # expect: on
