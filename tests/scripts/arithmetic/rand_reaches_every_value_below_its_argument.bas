dim seen[12]
for i = 1 to 3000
  r = rand(6)
  seen[r] = 1
next
for i = 0 to 5
  print seen[i];
next
print   # expect: 1.0000001.0000001.0000001.0000001.0000001.000000
