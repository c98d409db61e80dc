library "include/field.bas"

h = dbfcreate("t", Field("A", "C", 1, 0), Field("B", "C", 1, 0))
for i = 0 to 5
  x = dbfappend(h, format(i, "%d"), format(i + 1, "%d"))
next
x = dbfclose(h)
h = dbfopen("t")
r = dbfread(h)
print r[0] + r[1]           # expect: 01
r = dbfread(h)
print r[0] + r[1]           # expect: 12
print dbfseek(h, 4)         # expect: True
r = dbfread(h)
print r[0] + r[1]           # expect: 45
r = dbfread(h)
print r[0] + r[1]           # expect: 56
print dbfseek(h, 1.9)       # expect: True
r = dbfread(h)
print r[0] + r[1]           # expect: 12
end
