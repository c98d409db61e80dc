type Point
  x as integer
  y as double
endtype
dim p as Point, q as Point, n as integer, r as Point
p.x = 1
q.x = 2
r.x = 3
n = 4
print p.x; q.x; r.x; int(n)  # expect: 1234
