library "missing.bas"  # expect error 1: Syntax error
library "missing.bas"
print "main"        # expect: main
