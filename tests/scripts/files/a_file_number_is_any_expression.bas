n = 3
open "data" as n * 2 + 1
print int(filesize(7))                       # expect: 3
open "data" as "8"
print int(filesize(8)); int(filesize("8"))   # expect: 33
print int(filesize(8.9))                     # expect: 3
