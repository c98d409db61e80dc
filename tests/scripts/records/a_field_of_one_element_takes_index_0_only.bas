type Point
  x as integer
  y as double
endtype
dim p as Point
p.x[0] = 5
print p.x[0]; p.x[1]; p.x  # expect: 555
p.x[1] = 6  # expect error 36: Array index is out of bounds
