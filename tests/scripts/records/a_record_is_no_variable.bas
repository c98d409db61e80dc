type Point
  x as integer
  y as double
endtype
dim p as Point
print "["; p; "]"; ubound("p")  # expect: []0
