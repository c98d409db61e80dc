open "data" as 1
print int(seek(1, 0)); int(getfilepos(1))   # expect: 00
