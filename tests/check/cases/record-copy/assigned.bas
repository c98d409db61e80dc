type Point
  x as integer
endtype
dim a as Point
a.x = 1
b = a  # problem: record-copy@5
