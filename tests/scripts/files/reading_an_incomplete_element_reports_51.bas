open "data" as 1
r = read(1, 2, 2)   # expect error 51: File I/O Error. Actual number of bytes is different than requested.
