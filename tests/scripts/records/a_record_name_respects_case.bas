type Point
  x as integer
  y as double
endtype
dim P as Point
P.x = 1
print P.x  # expect: 1
p.x = 2    # expect error 37: Undefined variable
