x = iseof(1)   # expect error 49: Invalid file handle
x = iseof(0)   # expect error 49: Invalid file handle
open "data" as 1
x = iseof(2)   # expect error 49: Invalid file handle
x = iseof()    # expect error 24: Incorrect number of function parameters
print "on"     # expect: on
