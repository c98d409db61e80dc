type Point
  x as integer
  y as double
endtype
dim p as Point
p.x = 1
dim p__#1 as Point
print p.x  # expect: 0
p.x = 2
print p.x  # expect: 2
call Show()
end
sub Show()
  print p.x  # expect: 1
endsub
