type Point
  x as integer
  y as double
endtype
call Announce()
print p.x  # expect: 6
end
sub Announce()
  dim p as Point
  p.x = 6
endsub
