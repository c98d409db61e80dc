type Twice
  v as integer
  v as double
endtype
dim t as Twice
t.v = 2.5
print t.v  # expect: 2
