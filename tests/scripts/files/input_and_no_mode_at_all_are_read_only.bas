open "data" for input as 1
n = write(1, 65, 1)      # expect error 53: Run-time file I/O error.
open "data" as 2
n = write(2, 65, 1)      # expect error 53: Run-time file I/O error.
print int(filesize(2))   # expect: 3
