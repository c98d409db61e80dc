x = read(1, 1, 1)   # expect error 49: Invalid file handle
x = read(0, 1, 1)   # expect error 49: Invalid file handle
open "data" as 1
x = read(2, 1, 1)   # expect error 49: Invalid file handle
x = read()          # expect error 24: Incorrect number of function parameters
print "on"          # expect: on
