include             # expect error 1: Syntax error
include "part.bas"
print "main"        # expect: main
