dim b[5]
b[0] = 0
b[1] = 65
b[2] = 255
b[3] = 2.9
b[4] = "7 seas"
open "out" for output as 1
print int(write(1, b, 1))   # expect: 5
close 1
open "out" as 9
r = read(9, filesize(9), 1)
close 9
s = str(r[0])
for i = 1 to ubound("r") - 1
  s = s + " " + str(r[i])
next
print s                     # expect: 0 65 255 2 7
