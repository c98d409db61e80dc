type Point
  x as integer
  y as double
endtype
dim p as Point
p.x = 1 : p.y = 2
print p.x; p.y  # expect: 12.000000
p.x = 3 p.y = 4
print p.x; p.y  # expect: 34.000000
call Set()
print p.x; p.y  # expect: 56.000000
end
sub Set()
  p.x = 5 p.y = 6
endsub
