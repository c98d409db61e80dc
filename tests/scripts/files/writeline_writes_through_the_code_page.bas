open "out" for output as 1 text
n = writeline(1, "aä€😀")
close 1
open "out" as 9
r = read(9, filesize(9), 1)
close 9
s = str(r[0])
for i = 1 to ubound("r") - 1
  s = s + " " + str(r[i])
next
print s   # expect: 97 195 164 226 130 172 240 159 152 128
