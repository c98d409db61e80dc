open "data" as 1 text
r = readlist(1, ",;")
print ubound("r")                             # expect: 4
print r[0]; " "; r[1]; " "; r[2]; " "; r[3]   # expect: 1.000000 2.500000 -3.000000 400.000000
r = readlist(1, ",")
print ubound("r")                             # expect: 2
print r[0]; " "; r[1]                         # expect: 5.000000 6.000000
