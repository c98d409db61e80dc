open "data" as 1 text
r = readlist(1, " ")
print r[0]; " "; r[1]; " "; r[2]   # expect: 0.000000 7.000000 0.000000
