library "include/field.bas"

h = dbfcreate("t", Field("A", "C", 2, 0), Field("B", "C", 2, 0))
print dbfappend(h, "a", "b", "c", "d")    # expect: True
print dbfwrite(h, 0, "e", "f", "g", "h")  # expect: True
x = dbfseek(h, 0)
r = dbfread(h)
print ubound("r")                         # expect: 2
print r[0] + "|" + r[1]                   # expect: e |f 
end
