if 1 = 2 then
  type Point
    x as integer
  endtype
endif
dim p as Point  # expect error 1: Syntax error
