open "data" as 1
print int(filesize(1))   # expect: 1
open "DATA" as 2
print int(filesize(2))   # expect: 3
