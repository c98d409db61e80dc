# Matrix product: arrays with a computed index.
n = 80   # size
size = 60
cells = size * size
dim a[cells + 1]
dim b[cells + 1]
dim c[cells + 1]
v = 0
for i = 1 to cells
  v = v + 1
  if v > 6 then
    v = 0
  endif
  a[i] = v
  b[i] = 6 - v
next
for turn = 1 to n
  for i = 1 to size
    for j = 1 to size
      s = 0
      for k = 1 to size
        s = s + a[(i - 1) * size + k] * b[(k - 1) * size + j]
      next
      c[(i - 1) * size + j] = s
    next
  next
next
total = 0
for i = 1 to cells
  total = total + i * c[i]
next
print format(total, "%.0f")
