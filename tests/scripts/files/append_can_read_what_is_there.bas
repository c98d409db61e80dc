open "data" for append as 1
p = seek(1, 1)
print read(1, 1, 1)   # expect: 98
