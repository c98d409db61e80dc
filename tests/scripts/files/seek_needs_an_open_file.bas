x = seek(1, 0)   # expect error 49: Invalid file handle
x = seek(0, 0)   # expect error 49: Invalid file handle
open "data" as 1
x = seek(2, 0)   # expect error 49: Invalid file handle
x = seek()       # expect error 24: Incorrect number of function parameters
print "on"       # expect: on
