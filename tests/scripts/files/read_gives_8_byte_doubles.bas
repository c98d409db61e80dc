open "data" as 1
r = read(1, 4, 8)
print r[0]; " "; r[1]; " "; r[2]; " "; r[3]   # expect: 1.500000 -0.250000 10000000000.000000 inf
