library "include/field.bas"

h = dbfcreate("t", Field("A", "C", 5, 0))
x = dbfappend(h, "old")
x = dbfclose(h)
h = dbfcreate("t", Field("B", "C", 5, 0))
print dbfnumrecords(h)      # expect: 0
n = dbffieldnames(h)
print n                     # expect: B
end
