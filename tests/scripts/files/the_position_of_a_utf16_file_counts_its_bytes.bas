open "data" as 1 text
print int(getfilepos(1))             # expect: 2
x = readline(1)
print int(getfilepos(1)); iseof(1)   # expect: 6False
x = readline(1)
print int(getfilepos(1)); iseof(1)   # expect: 10True
