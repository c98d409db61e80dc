open "out" for output as 1 text
print int(writeline(1, "aä", "UTF16"))   # expect: 1
n = writeline(1, "€")
close 1
open "out" as 9
r = read(9, filesize(9), 1)
close 9
s = str(r[0])
for i = 1 to ubound("r") - 1
  s = s + " " + str(r[i])
next
print s                                  # expect: 255 254 97 0 228 0 172 32
