open "data" as 1 text
r = readlist(1, ",")
print ubound("r")                    # expect: 5
print r[0]; r[1]; r[2]; r[3]; r[4]   # expect: 0.0000001.0000000.0000002.0000000.000000
