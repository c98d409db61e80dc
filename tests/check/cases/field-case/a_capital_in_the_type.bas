type Point
  X as integer
endtype
dim p as Point
p.X = 5  # problem: field-case@1
print p.x  # problem: field-case@7
