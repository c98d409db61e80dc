# One report for the text behind the program, one for the text at this place.
include "missing.bas"  # expect error 1: Syntax error
# expect error 1: Syntax error
print "main"        # expect: main
