library "include/field.bas"

h = dbfcreate("prices.txt", Field("NAME", "C", 4, 0))
x = dbfclose(h)
names = findfiles("prices.*", "")
print names              # expect: prices.dbf
h = dbfopen("prices.txt")
print h                  # expect: 0
h = dbfopen("prices")
print h                  # expect: 1
h = dbfopen("prices.dbf")
print h                  # expect: 2
h = dbfopen("PRICES.DBF")
print h                  # expect: 3
end
