type "a point"
  x as integer
endtype
dim p as "a point"
p.x = 4
print p.x  # expect: 4
