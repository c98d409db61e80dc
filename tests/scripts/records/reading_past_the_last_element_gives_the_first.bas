type Track
  v[3] as integer
endtype
dim t as Track
t.v[0] = 5
t.v[2] = 7
print t.v[2]; t.v[3]; t.v[-1]; t.v[99]  # expect: 7555
