dim b[3]
b[0] = 513
b[1] = 65535
b[2] = -2
open "out" for output as 1
print int(write(1, b, 2))   # expect: 3
close 1
open "out" as 9
r = read(9, filesize(9), 1)
close 9
s = str(r[0])
for i = 1 to ubound("r") - 1
  s = s + " " + str(r[i])
next
print s                     # expect: 1 2 255 255 254 255
