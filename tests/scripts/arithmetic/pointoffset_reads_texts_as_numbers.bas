r = pointoffset("0", "0", "10 m", "0", "5", "", "2")
print r[0]; " "; r[1]   # expect: 5.000000 2.000000
