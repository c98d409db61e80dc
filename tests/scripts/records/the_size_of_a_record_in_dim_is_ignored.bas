type Point
  x as integer
  y as double
endtype
dim p[3] as Point
p.x = 2
print p.x; ubound("p")  # expect: 20
