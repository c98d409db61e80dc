open "data" as 1
r = read(1, 2, 2)
print r[0]; " "; r[1]   # expect: 65279 97
