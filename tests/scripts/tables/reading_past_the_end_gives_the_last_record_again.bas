library "include/field.bas"

h = dbfcreate("t", Field("A", "C", 1, 0))
x = dbfappend(h, "1")
x = dbfappend(h, "2")
x = dbfclose(h)
h = dbfopen("t")
for i = 1 to 4
  r = dbfread(h)
  print r;
next
print ""                    # expect: 1222
x = dbfseek(h, 50)
print x                     # expect: True
r = dbfread(h)
print r                     # expect: 2
x = dbfseek(h, 0)
r = dbfread(h)
print r                     # expect: 1
end
