dim b[3]
b[0] = 0.1
b[1] = 1 / 3
b[2] = -1e300
open "out" for output as 1
n = write(1, b, 8)
p = seek(1, 0)
r = read(1, 3, 8)
for i = 0 to 2
  if r[i] <> b[i] then
    print "differs"
  endif
next
print "compared"   # expect: compared
