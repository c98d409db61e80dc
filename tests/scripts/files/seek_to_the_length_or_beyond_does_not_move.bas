open "data" as 1
p = seek(1, 1)
p = seek(1, 3)
print int(p); int(getfilepos(1))   # expect: 01
p = seek(1, 4)
print int(p); int(getfilepos(1))   # expect: 01
p = seek(1, -1)
print int(p); int(getfilepos(1))   # expect: 01
