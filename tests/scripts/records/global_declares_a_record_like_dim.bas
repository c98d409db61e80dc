type Point
  x as integer
  y as double
endtype
global p as Point
p.x = 1
call Show()
end
sub Show()
  print p.x  # expect: 1
endsub
