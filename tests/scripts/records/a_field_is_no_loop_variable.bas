type Point
  x as integer
  y as double
endtype
dim p as Point
for p.x = 1 to 3  # expect error 4: Expected: =
# expect error 18: Unexpected operator
