open "data" as 1 text
x = readline(1)
x = readline(1)
p = seek(1, 2)
print readline(1)   # expect: a
p = seek(1, 6)
print readline(1)   # expect: b
