library "include/field.bas"

h = dbfcreate("t", Field("A", "integer", 1, 0), Field("B", "bool", 5, 0), Field("C", "Char", 2, 0), Field("D", "n", 1, 0), Field("E", "memo", 3, 0))
x = dbfappend(h, "1", "t", "ccc", "2", "eee")
x = dbfseek(h, 0)
r = dbfread(h)
for i = 0 to 4
  print len(r[i]);
  print "";
next
print ""                    # expect: 1812183
end
