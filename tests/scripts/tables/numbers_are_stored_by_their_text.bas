library "include/field.bas"

h = dbfcreate("t", Field("C", "C", 12, 0), Field("N0", "N", 1, 0), Field("N2", "N", 1, 2))
x = dbfappend(h, 12.5, 12.5, 12.5)
x = dbfappend(h, int(12.5), int(12.5), int(12.5))
x = dbfappend(h, True, True, True)
x = dbfseek(h, 0)
for i = 0 to 2
  r = dbfread(h)
  print Bars(r[0]) + Bars(r[1]) + Bars(r[2])
next
# expect: |12.500000   ||12.               ||12.50             |
# expect: |12          ||12                ||12                |
# expect: |1           ||1                 ||1                 |
end
