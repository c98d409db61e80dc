x = filesize(1)   # expect error 49: Invalid file handle
x = filesize(0)   # expect error 49: Invalid file handle
open "data" as 1
x = filesize(2)   # expect error 49: Invalid file handle
x = filesize()    # expect error 24: Incorrect number of function parameters
print "on"        # expect: on
