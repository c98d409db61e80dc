library "include/field.bas"

run "child.bas"
h = dbfopen("t")
print dbfnumrecords(h)      # expect: 2
r = dbfread(h)
print r                     # expect: one  
x = dbfclose(h)
print right(Shown("t.dbf"), 16)   # expect:  one   two  <26>
end
