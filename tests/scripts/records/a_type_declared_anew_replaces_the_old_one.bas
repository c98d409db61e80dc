type Point
  x as integer
  y as double
endtype
dim old as Point
old.y = 1.5
type Point
  z as integer
endtype
dim p as Point
p.z = 3
print p.z; " "; old.y  # expect: 3 1.500000
p.x = 1    # expect error 37: Undefined variable
old.z = 1  # expect error 37: Undefined variable
