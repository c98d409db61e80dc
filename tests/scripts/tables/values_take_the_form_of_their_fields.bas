library "include/field.bas"

h = dbfcreate("t", Field("C", "CHAR", 3, 0), Field("N", "NUMERIC", 1, 2), Field("L", "BOOL", 9, 0), Field("D", "DATE", 1, 0), Field("F", "FLOAT", 1, 1))
x = dbfappend(h, "abcdef", "12.3456", "yes", "20260731", "0.25")
x = dbfappend(h, "a", "7", "maybe", "any text", "7.")
x = dbfseek(h, 0)
for i = 0 to 1
  r = dbfread(h)
  print Bars(r[0]) + Bars(r[1]) + Bars(r[2]) + Bars(r[3]) + Bars(r[4])
next
# expect: |abc||12.34             ||y||20260731||0.2                 |
# expect: |a  ||7                 ||?||any text||7.0                 |
end
