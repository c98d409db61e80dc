type T
  x[3] as integer
endtype
dim r as T
print r.x[nope]  # problem: undefined-variable@11
print r.x[1]
