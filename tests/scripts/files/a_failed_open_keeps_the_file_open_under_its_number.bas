open "data" as 1
open "nope" as 1         # expect error 47: File does not exist
print int(filesize(1))   # expect: 3
