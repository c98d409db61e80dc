type Point
  x as integer
  y as double
endtype
dim p as Point
p.x = 2.9
print p.x  # expect: 2
p.x = -2.9
print p.x  # expect: -2
