type Point  # a place

  # the columns
  x as integer  # to the east
  rem y as integer
  # endtype

  rem endtype
  y as double
endtype  # done
dim p as Point  # one of them
p.x = 2
p.y = 1
print p.x; " "; p.y  # expect: 2 1.000000
