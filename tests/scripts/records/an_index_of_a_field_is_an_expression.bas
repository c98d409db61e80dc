type Track
  v[3] as integer
endtype
dim t as Track
i = 1
t.v[i + 1] = 8
t.v[0] = 2
print t.v[t.v[0]]; t.v["2"]  # expect: 88
