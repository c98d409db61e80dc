type Point
  x as integer
  y as double
endtype
dim p as Point
p.x = 1
p.z = 3     # expect error 37: Undefined variable
print p.z; "behind"  # expect error 37: Undefined variable
# expect: behind
print p.x   # expect: 1
