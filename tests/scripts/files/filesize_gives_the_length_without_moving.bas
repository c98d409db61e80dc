open "data" as 1
r = read(1, 1, 1)
print int(filesize(1)); int(getfilepos(1))   # expect: 31
open "empty" as 2
print int(filesize(2))                       # expect: 0
