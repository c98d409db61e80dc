library "include/field.bas"

open "t.cpg" for output as 1 text
x = writeline(1, "UTF-8")
close 1
h = dbfcreate("t", Field("A", "C", 6, 0))
x = dbfappend(h, "Дa")
x = dbfappend(h, "abcde€")
x = dbfseek(h, 0)
r = dbfread(h)
print Bars(r)               # expect: |Дa   |
r = dbfread(h)
print Bars(r)               # expect: |abcde |
x = dbfclose(h)
print right(Shown("t.dbf"), 26)   # expect:  <208><148>a    abcde <26>
end
