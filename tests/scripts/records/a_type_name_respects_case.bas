type Point
  x as integer
  y as double
endtype
dim p as point  # expect error 1: Syntax error
dim p as Point
p.x = 4
print p.x  # expect: 4
