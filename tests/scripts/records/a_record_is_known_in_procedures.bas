type Point
  x as integer
  y as double
endtype
dim p as Point
p.x = 1
call Move(10)
print p.x  # expect: 11
end
sub Move(by)
  p.x = p.x + by
endsub
