open "data" for output as 1
r = write(1, 3, 0)       # expect error 45: Incorrect parameter
r = write(1, 3, 3)       # expect error 45: Incorrect parameter
r = write(1, 3, 5)       # expect error 45: Incorrect parameter
r = write(1, 3, 7)       # expect error 45: Incorrect parameter
r = write(1, 3, 9)       # expect error 45: Incorrect parameter
r = write(1, 3, 16)      # expect error 45: Incorrect parameter
r = write(1, 3, -1)      # expect error 45: Incorrect parameter
print int(filesize(1))   # expect: 0
