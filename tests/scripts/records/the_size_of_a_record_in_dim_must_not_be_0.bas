type Point
  x as integer
  y as double
endtype
dim q[0] as Point  # expect error 32: Incorrect array size
# expect error 18: Unexpected operator
