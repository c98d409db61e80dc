open "data" as 1 text
x = readline(1)
p = getfilepos(1)
x = readline(1)
x = readline(1)
p = seek(1, p)
print readline(1)   # expect: zwei
