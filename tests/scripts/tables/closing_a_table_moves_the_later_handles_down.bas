library "include/field.bas"

a = dbfcreate("a", Field("A1", "C", 4, 0))
b = dbfcreate("b", Field("B1", "C", 4, 0), Field("B2", "C", 4, 0))
c = dbfcreate("c", Field("C1", "C", 4, 0), Field("C2", "C", 4, 0), Field("C3", "C", 4, 0))
print format(a, "%d") + format(b, "%d") + format(c, "%d")   # expect: 012
print dbfclose(0)        # expect: True
print dbfnumfields(0)    # expect: 2
print dbfnumfields(1)    # expect: 3
print dbfnumfields(2)    # expect: 0
d = dbfopen("a")
print d                  # expect: 2
print dbfnumfields(2)    # expect: 1
end
