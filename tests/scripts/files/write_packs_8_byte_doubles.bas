dim b[2]
b[0] = 1.5
b[1] = "-0.25"
open "out" for output as 1
print int(write(1, b, 8))   # expect: 2
close 1
open "out" as 9
r = read(9, filesize(9), 1)
close 9
s = str(r[0])
for i = 1 to ubound("r") - 1
  s = s + " " + str(r[i])
next
print s                     # expect: 0 0 0 0 0 0 248 63 0 0 0 0 0 0 208 191
