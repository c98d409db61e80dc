x = writeline(1, "x")   # expect error 49: Invalid file handle
x = writeline(0, "x")   # expect error 49: Invalid file handle
open "data" as 1
x = writeline(2, "x")   # expect error 49: Invalid file handle
x = writeline()         # expect error 24: Incorrect number of function parameters
print "on"              # expect: on
