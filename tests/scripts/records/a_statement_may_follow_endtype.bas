type Point
  x as integer
endtype dim p as Point : p.x = 5 print p.x
# expect: 5
