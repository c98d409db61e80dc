type Point
  x as integer
endtype
dim p as Point
p.X = 5
print p.x
