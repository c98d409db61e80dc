open "data" as 1
print read(1, 1, 1)   # expect: 1
print read(1, 1, 2)   # expect: 770
print read(1, 1, 4)   # expect: 117835012
print iseof(1)        # expect: True
