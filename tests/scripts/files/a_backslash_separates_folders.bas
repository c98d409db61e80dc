open "box\inner\data" as 1
print int(filesize(1))   # expect: 3
open "box\made" for output as 2
n = write(2, 65, 1)
close 2
open "box/made" as 2
print int(filesize(2))   # expect: 1
