type Point
  x as integer
  y as double
endtype
dim p as Point
dim q as Point
p.x = 1
q.x = 2
p.y = 0.5
print p.x; q.x; q.y  # expect: 120.000000
