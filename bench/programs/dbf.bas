# A dBase table: the size is the number of records that are written and then scanned.
n = 50000   # size
dim name[3]
name[0] = "NAME"
name[1] = "C"
name[2] = 24
dim kind[3]
kind[0] = "KIND"
kind[1] = "C"
kind[2] = 8
dim units[3]
units[0] = "UNITS"
units[1] = "N"
units[2] = 18
dim price[4]
price[0] = "PRICE"
price[1] = "N"
price[2] = 18
price[3] = 2
dim kinds[4]
kinds[0] = "pump"
kinds[1] = "valve"
kinds[2] = "filter"
kinds[3] = "hose"
h = dbfcreate("records.dbf", name, kind, units, price)
seed = 42
for i = 1 to n
  seed = seed * 3877 + 29573
  seed = seed - int(seed / 139968) * 139968
  x = dbfappend(h, "item " + format(i, "%d"), kinds[int(seed / 34992)], format(seed, "%d"), format(seed / 4, "%.2f"))
next
x = dbfclose(h)

h = dbfopen("records.dbf")
rows = 0
amount = 0
money = 0
pumps = 0
for i = 1 to dbfnumrecords(h)
  r = dbfread(h)
  rows = rows + 1
  amount = amount + val(r[2])
  money = money + val(r[3])
  if r[1] = "pump    " then
    pumps = pumps + 1
  endif
next
x = dbfclose(h)
print format(rows, "%.0f"); " "; format(amount, "%.0f"); " "; format(money, "%.2f"); " "; format(pumps, "%.0f")
