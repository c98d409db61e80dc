library "include/field.bas"

h = dbfopen("foreign")
print dbfnumrecords(h)      # expect: 2
print dbfnumfields(h)       # expect: 2
for i = 1 to 2
  r = dbfread(h)
  print Bars(r[0]) + Bars(r[1])
next
# expect: |aaa ||  1|
# expect: |bbb ||  2|
x = dbfwrite(h, 1, "ccc", "3")
x = dbfappend(h, "ddd", "4")
x = dbfclose(h)
print left(Shown("FOREIGN.DBF"), 1)      # expect: 0
print right(Shown("FOREIGN.DBF"), 34)    # expect:  aaa   1xx ccc 3  yy ddd 4    <26>
end
