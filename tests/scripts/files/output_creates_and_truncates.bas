open "data" for output as 1
print int(filesize(1))   # expect: 0
n = write(1, 49, 1)
close 1
open "data" as 9
r = read(9, filesize(9), 1)
close 9
s = str(r[0])
for i = 1 to ubound("r") - 1
  s = s + " " + str(r[i])
next
print s                  # expect: 49
open "fresh" for output as 1
print int(filesize(1))   # expect: 0
