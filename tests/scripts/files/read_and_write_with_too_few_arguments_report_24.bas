open "out" for output as 1
x = read(1)              # expect error 24: Incorrect number of function parameters
x = read(1, 1)           # expect error 24: Incorrect number of function parameters
x = write(1)             # expect error 24: Incorrect number of function parameters
x = write(1, 1)          # expect error 24: Incorrect number of function parameters
print int(filesize(1))   # expect: 0
