open "data" as 1 text
print readline(1)       # expect: one
print int(seek(1, 0))   # expect: 0
print readline(1)       # expect: one
print int(seek(1, 9))   # expect: 9
print readline(1)       # expect: hree
p = seek(1, 4)
print readline(1)       # expect: two
print readline(1)       # expect: three
