x = readlist(1, ",")   # expect error 49: Invalid file handle
x = readlist(0, ",")   # expect error 49: Invalid file handle
open "data" as 1
x = readlist(2, ",")   # expect error 49: Invalid file handle
x = readlist()         # expect error 24: Incorrect number of function parameters
print "on"             # expect: on
