open "out" for output as 1 text
print int(writeline(1, "ab"))                     # expect: 1
print int(writeline(1, "c" + format(10, "%c")))   # expect: 1
x = format(13, "%c") + format(10, "%c")
print int(writeline(1, x + "d" + x))              # expect: 1
close 1
open "out" as 9
r = read(9, filesize(9), 1)
close 9
s = str(r[0])
for i = 1 to ubound("r") - 1
  s = s + " " + str(r[i])
next
print s                                           # expect: 97 98 99 10 13 10 100 13 10
