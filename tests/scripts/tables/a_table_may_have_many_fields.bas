library "include/field.bas"

h = dbfcreate("t", Field("F1", "C", 253, 0), Field("F2", "C", 300, 0), Field("F3", "C", 0, 0), Field("F4", "C", -4, 0))
x = dbfappend(h, repeat("a", 400), repeat("b", 400), "cc", "dd")
x = dbfseek(h, 0)
r = dbfread(h)
print len(r[0])             # expect: 253
print len(r[1])             # expect: 253
print len(r[2])             # expect: 1
print len(r[3])             # expect: 1
end
