type Point
  x as integer
  y as double
endtype
dim p as Point
p.x = 2147483647
print p.x  # expect: 2147483647
p.x = 2147483648
print p.x  # expect: 2147483647
p.x = -2147483648
print p.x  # expect: -2147483648
p.x = -3000000000
print p.x  # expect: -2147483648
p.x = 0 / 0
print p.x  # expect: 0
