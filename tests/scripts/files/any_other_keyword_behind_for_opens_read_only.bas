open "data" for title as 1
print int(filesize(1))   # expect: 3
n = write(1, 65, 1)      # expect error 53: Run-time file I/O error.
