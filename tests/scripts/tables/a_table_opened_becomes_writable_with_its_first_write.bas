library "include/field.bas"

h = dbfcreate("t", Field("A", "C", 1, 0))
x = dbfappend(h, "1")
x = dbfappend(h, "2")
x = dbfclose(h)
h = dbfopen("t")
r = dbfread(h)
print dbfappend(h, "3")     # expect: True
print dbfnumrecords(h)      # expect: 3
print dbfwrite(h, 0, "0")   # expect: True
r = dbfread(h)
print r                     # expect: 2
x = dbfclose(h)
h = dbfopen("t")
print dbfnumrecords(h)      # expect: 3
for i = 1 to 3
  r = dbfread(h)
  print r;
next
print ""                    # expect: 023
end
