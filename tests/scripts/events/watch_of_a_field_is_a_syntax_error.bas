type Point
  x as integer
endtype
dim p as Point
watch create p.x  # expect error 1: Syntax error
p.x = 2
print p.x  # expect: 2
