open "data" as 1
r = read(1, 0, 1)
print "["; r; "]"          # expect: []
print int(getfilepos(1))   # expect: 0
