type Point
  x as integer
  y as double
endtype
dim p__#1 as Point
P.x = 5
print p.x; P.x  # expect: 55
