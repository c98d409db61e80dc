type T
  x as integer
endtype
dim r__#0 as T
print r__#0.x
