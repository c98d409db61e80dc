open "data" as 1
r = read(1, 4, 1)   # expect error 51: File I/O Error. Actual number of bytes is different than requested.
print "on"          # expect: on
