library lib         # expect error 1: Syntax error
library "lib.bas"
print "main"        # expect: main
