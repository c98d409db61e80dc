open "da" + "ta" as 1
print int(filesize(1))   # expect: 3
p = "data"
open p as 2
print int(filesize(2))   # expect: 3
