open "data" as 1 text
print readline(1)   # expect: one
p = seek(1, 99)
print readline(1)   # expect: two
