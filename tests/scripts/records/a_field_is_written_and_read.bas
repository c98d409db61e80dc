type Point
  x as integer
  y as double
endtype
dim p as Point
p.x = 3
p.y = 2.5
print p.x; " "; p.y  # expect: 3 2.500000
p.x = p.x + p.y
print p.x            # expect: 5
