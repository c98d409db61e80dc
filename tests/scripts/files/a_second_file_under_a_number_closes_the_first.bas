open "first" for output as 1
n = write(1, 65, 1)
open "second" as 1
print int(filesize(1))   # expect: 3
open "first" as 2
print int(filesize(2))   # expect: 1
