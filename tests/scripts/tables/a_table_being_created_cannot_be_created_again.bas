library "include/field.bas"

h = dbfcreate("t", Field("A", "C", 5, 0))
x = dbfappend(h, "kept")
again = dbfcreate("t", Field("B", "C", 5, 0))
print again                 # expect: -1
x = dbfclose(h)
h = dbfopen("t")
r = dbfread(h)
print r                     # expect: kept 
end
