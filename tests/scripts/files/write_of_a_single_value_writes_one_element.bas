open "out" for output as 1
print int(write(1, 66, 1))        # expect: 1
print int(write(1, Nothing, 1))   # expect: 1
close 1
open "out" as 9
r = read(9, filesize(9), 1)
close 9
s = str(r[0])
for i = 1 to ubound("r") - 1
  s = s + " " + str(r[i])
next
print s                           # expect: 66 0
