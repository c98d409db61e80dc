type Point
  x as integer
  y as double
endtype
dim p as Point
p.x = 1
p = "text"
p.x = p.x + 1
print p; p.x  # expect: text2
