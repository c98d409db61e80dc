library "include/field.bas"

h = dbfcreate("t", Field("A", "C", 5, 0))
run "child.bas"             # expect: 0
print dbfnumfields(h)       # expect: 1
end
