library "include/field.bas"

print dbfopen("empty")      # expect: -1
print dbfopen("short")      # expect: -1
print dbfopen("fields")     # expect: -1
print dbfopen("header")     # expect: -1
print dbfopen("folder")     # expect: -1
h = dbfopen("norecord")
print h                     # expect: 0
r = dbfread(h)
print Bars(r)               # expect: ||
print dbfappend(h, "a")     # expect: False
h = dbfopen("lying")
print h                     # expect: 1
print dbfnumrecords(h)      # expect: 2000000000
r = dbfread(h)
r = dbfread(h)
print r                     # expect: aaaa
end
