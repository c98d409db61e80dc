type Track
  v[3] as integer
endtype
dim t as Track
t.v[1.9] = 5
t.v[-0.5] = 3
print t.v[1]; t.v[0]; t.v[1.2]  # expect: 535
