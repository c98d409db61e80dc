type T
  x as integer
endtype
dim r as T
print r.y  # problem: undefined-variable@7
