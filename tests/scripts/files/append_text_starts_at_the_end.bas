open "data" for append as 1 text
print int(getfilepos(1)); iseof(1)   # expect: 3True
n = writeline(1, "d")
close 1
open "data" as 9
r = read(9, filesize(9), 1)
close 9
s = str(r[0])
for i = 1 to ubound("r") - 1
  s = s + " " + str(r[i])
next
print s                              # expect: 97 98 99 100
