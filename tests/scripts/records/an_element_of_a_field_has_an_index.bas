type Track
  n as integer
  height[4] as double
endtype
dim t as Track
for i = 0 to 3
  t.height[i] = i * 1.5
next
t.n = 4
print t.height[0]; " "; t.height[3]  # expect: 0.000000 4.500000
print t.height                       # expect: 0.000000
t.height = 9
print t.height[0]; " "; t.n          # expect: 9.000000 4
