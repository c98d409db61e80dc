open "data" as 1
r = read(1, 3, 1)
r = read(1, 1, 1)   # expect error 51: File I/O Error. Actual number of bytes is different than requested.
