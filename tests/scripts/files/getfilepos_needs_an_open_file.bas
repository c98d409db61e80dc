x = getfilepos(1)   # expect error 49: Invalid file handle
x = getfilepos(0)   # expect error 49: Invalid file handle
open "data" as 1
x = getfilepos(2)   # expect error 49: Invalid file handle
x = getfilepos()    # expect error 24: Incorrect number of function parameters
print "on"          # expect: on
