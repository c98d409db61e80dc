type Point
  x as integer
  y as double
endtype
dim p as Point
p.x = 3
dim p as Point
print p.x  # expect: 0
