type Point
  _x as integer
  _
  y as integer
endtype
dim p as Point
p.x = 1
p.y = 2
print p.x; p.y  # expect: 12
