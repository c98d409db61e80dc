call Announce()
dim p as Point
p.x = 4
print p.x  # expect: 4
end
sub Announce()
  type Point
    x as integer
# expect error 20 anywhere: ENDFUNCTION statement is missing
