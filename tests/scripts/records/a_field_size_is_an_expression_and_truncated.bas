n = 2
type Track
  v[n + 1.9] as integer
endtype
dim t as Track
t.v[2] = 5
print t.v[2]  # expect: 5
t.v[3] = 6    # expect error 36: Array index is out of bounds
