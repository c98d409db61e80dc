# A map of text keys: distinct keys stored, counted up through kept keys, looked up by new ones.
n = 100000   # size
map create "stock"
kept = min(n, 16000)
dim keys[kept]
for i = 0 to n - 1
  key = "item" + format(i, "%d")
  call mapset("stock", key, 0)
  if i < kept then
    keys[i] = key
  endif
next
seed = 42
for i = 1 to n * 3
  seed = seed * 3877 + 29573
  seed = seed - int(seed / 139968) * 139968
  spot = seed - int(seed / kept) * kept
  call mapset("stock", keys[spot], mapget("stock", keys[spot]) + 1)
next
# Every second one of these keys is not in the map.
found = 0
total = 0
for i = 0 to n - 1
  key = "item" + format(i * 2, "%d")
  if maphas("stock", key) = True then
    found = found + 1
    total = total + mapget("stock", key) * i
  endif
next
print format(found, "%.0f"); " "; format(total, "%.0f")
