open "one" for output as 1 text
n = writeline(1, "a", "UTF8")
n = writeline(1, "b", "UNICODE")
n = writeline(1, "c", 5)
n = writeline(1, "d", "UTF16")
n = writeline(1, "e", "UTF-16")
n = writeline(1, "f", "")
close 1
open "one" as 9
r = read(9, filesize(9), 1)
close 9
s = str(r[0])
for i = 1 to ubound("r") - 1
  s = s + " " + str(r[i])
next
print s   # expect: 97 98 99 100 0 101 0 102 0
