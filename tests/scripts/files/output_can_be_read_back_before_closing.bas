open "out" for output as 1
n = write(1, 65, 1)
n = write(1, 66, 1)
print int(getfilepos(1))   # expect: 2
p = seek(1, 1)
print read(1, 1, 1)        # expect: 66
