call Announce()
# expect: declared
dim p as Point
p.x = 3
print p.x  # expect: 3
end
sub Announce()
  type Point
    x as integer
  endtype
  print "declared"
endsub
