type All
  a as CHAR
  b as Integer
  c as FLOAT
  d as Double
  e as STRING
endtype
dim r as All
r.a = 1
r.b = 2
r.c = 3
r.d = 4
print r.a; r.b; r.c; r.d; r.e  # expect: 123.0000004.000000
