open "data" as 1 text
x = readline(1)
print int(getfilepos(1))             # expect: 4
x = readline(1)
print int(getfilepos(1))             # expect: 6
x = readline(1)
print int(getfilepos(1)); iseof(1)   # expect: 10True
