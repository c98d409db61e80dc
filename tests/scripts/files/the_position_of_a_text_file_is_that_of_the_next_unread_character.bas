open "data" as 1 text
print int(getfilepos(1))             # expect: 0
x = readline(1)
print int(getfilepos(1)); iseof(1)   # expect: 2False
x = readline(1)
print int(getfilepos(1)); iseof(1)   # expect: 5False
x = readline(1)
print int(getfilepos(1)); iseof(1)   # expect: 8False
x = readline(1)
print int(getfilepos(1)); iseof(1)   # expect: 9True
