type Point
  x as integer

  y as char
endtype
dim p as Point
p.x = 3
p.y = 4
print p.x; p.y
# expect: 34
