library "include/field.bas"

h = dbfcreate("t", Field("A", "C", 5, 0))
x = dbfappend(h, "one")
x = dbfappend(h, "two")
end
