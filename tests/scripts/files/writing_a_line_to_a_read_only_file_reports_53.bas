open "data" as 1 text
n = writeline(1, "x")    # expect error 53: Run-time file I/O error.
close 1
open "data" as 1
print int(filesize(1))   # expect: 3
