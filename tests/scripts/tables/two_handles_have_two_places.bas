library "include/field.bas"

h = dbfcreate("t", Field("A", "C", 1, 0))
x = dbfappend(h, "1")
x = dbfappend(h, "2")
x = dbfclose(h)
a = dbfopen("t")
b = dbfopen("t")
r = dbfread(a)
r = dbfread(a)
print r                     # expect: 2
r = dbfread(b)
print r                     # expect: 1
x = dbfwrite(b, 1, "3")
x = dbfseek(a, 1)
r = dbfread(a)
print r                     # expect: 3
end
