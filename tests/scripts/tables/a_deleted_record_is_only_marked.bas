library "include/field.bas"

h = dbfcreate("t", Field("A", "C", 2, 0))
x = dbfappend(h, "aa")
x = dbfappend(h, "bb")
print dbfdelete(h, 0)       # expect: True
print dbfnumrecords(h)      # expect: 2
x = dbfseek(h, 0)
r = dbfread(h)
print r                     # expect: aa
x = dbfclose(h)
print right(Shown("t.dbf"), 10)    # expect: *aa bb<26>
h = dbfopen("t")
print dbfwrite(h, 0, "cc")  # expect: True
x = dbfclose(h)
print right(Shown("t.dbf"), 10)    # expect:  cc bb<26>
end
