type Point
  x as integer
  y as double
endtype
dim p as Point
p.y = 16777217.25
print p.y  # expect: 16777217.250000
p.y = 0.1
if p.y = 0.1 then
  print "exact"  # expect: exact
endif
