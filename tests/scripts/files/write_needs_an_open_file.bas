x = write(1, 1, 1)   # expect error 49: Invalid file handle
x = write(0, 1, 1)   # expect error 49: Invalid file handle
open "data" as 1
x = write(2, 1, 1)   # expect error 49: Invalid file handle
x = write()          # expect error 24: Incorrect number of function parameters
print "on"           # expect: on
