type Point
  x as integer
  y as double
endtype
dim p as Point
p.x = "12abc"
print p.x  # expect: 12
p.y = " 3.5e2x"
print p.y  # expect: 350.000000
p.x = "abc"
print p.x  # expect: 0
p.x = maphas("none", "k")
print p.x  # expect: 0
p.x = 9
dim unset
p.x = unset
print p.x  # expect: 0
