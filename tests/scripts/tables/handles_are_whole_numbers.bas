library "include/field.bas"

h = dbfcreate("t", Field("A", "C", 5, 0), Field("B", "C", 5, 0))
print dbfnumfields(0.9)     # expect: 2
print dbfnumfields(-0.9)    # expect: 2
print dbfnumfields("0")     # expect: 2
print dbfnumfields("none")  # expect: 2
x = dbfnumfields(-1.5)      # expect error 57: Invalid dBase file handle
print dbfnumfields(65536)   # expect: 0
end
