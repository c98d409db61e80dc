type Point
  x as integer
  y as double
endtype
dim p as Point
dim a[3]
a[0] = 1
a[2] = 3
a[1] = 2
p.x = a
print p.x  # expect: 2
