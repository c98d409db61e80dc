type Point
  x as integer y as integer
  z as integer, w as integer
endtype
dim p as Point
p.x = 1
p.z = 2
p.y = 3  # expect error 37: Undefined variable
p.w = 4  # expect error 37: Undefined variable
print p.x; p.z  # expect: 12
