library "include/field.bas"

h = dbfcreate("t", Field("A", "C", 1, 0))
x = dbfappend(h, "1")
print dbfwrite(h, 1, "2")   # expect: True
print dbfnumrecords(h)      # expect: 1
x = dbfseek(h, 1)
r = dbfread(h)
print r                     # expect: 2
end
