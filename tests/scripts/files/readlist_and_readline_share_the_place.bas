open "data" as 1 text
r = readlist(1, ",")
print readline(1)   # expect: text
r = readlist(1, ",")
print r[1]          # expect: 4.000000
