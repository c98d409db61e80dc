type Point
  x as integer
  y as double
endtype
type Point
  z as integer
  w as unicode  # expect error 1: Syntax error
endtype
dim p as Point
p.x = 1
print p.x  # expect: 1
