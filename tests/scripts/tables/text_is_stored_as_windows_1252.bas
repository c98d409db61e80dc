library "include/field.bas"

h = dbfcreate("t", Field("A", "C", 8, 0))
x = dbfappend(h, "Müller €")
x = dbfappend(h, "Дa")
x = dbfseek(h, 0)
r = dbfread(h)
print r                     # expect: Müller €
r = dbfread(h)
print Bars(r)               # expect: |?a      |
x = dbfclose(h)
print right(Shown("t.dbf"), 30)   # expect:  M<252>ller <128> ?a      <26>
end
