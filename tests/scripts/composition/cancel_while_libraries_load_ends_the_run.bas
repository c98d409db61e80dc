# answer: cancel
library "missing.bas"  # expect error 1: Syntax error
print "never"
