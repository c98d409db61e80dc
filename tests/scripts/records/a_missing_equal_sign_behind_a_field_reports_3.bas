type Point
  x as integer
  y as double
endtype
dim p as Point
p.x + 3  # expect error 3: No expression present
# expect error 18: Unexpected operator
