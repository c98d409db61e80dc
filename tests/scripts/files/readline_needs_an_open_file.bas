x = readline(1)   # expect error 49: Invalid file handle
x = readline(0)   # expect error 49: Invalid file handle
open "data" as 1
x = readline(2)   # expect error 49: Invalid file handle
x = readline()    # expect error 24: Incorrect number of function parameters
print "on"        # expect: on
