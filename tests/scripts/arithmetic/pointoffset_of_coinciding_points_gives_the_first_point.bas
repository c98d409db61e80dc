r = pointoffset(3, 4, 3, 4, 7, 8, 2)
print r[0]; " "; r[1]   # expect: 3.000000 4.000000
print ubound("r")       # expect: 2
r = pointoffset(0, 4, 0.0000000000009, 4, 7, 8, 2)
print r[0]; " "; r[1]   # expect: 0.000000 4.000000
r = pointoffset(0, 4, 0.0000000000011, 4, 7, 8, 2)
print r[0]; " "; r[1]   # expect: 7.000000 10.000000
