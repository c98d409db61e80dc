open "one" for output as 1 text
open "two" for output as 2 text
n = writeline(1, "", "UTF16")
n = writeline(2, "a")
close 2
open "two" as 9
r = read(9, filesize(9), 1)
close 9
s = str(r[0])
for i = 1 to ubound("r") - 1
  s = s + " " + str(r[i])
next
print s   # expect: 255 254 97 0
