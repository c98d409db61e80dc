open "data" as 1
print iseof(1)   # expect: False
r = read(1, 2, 1)
print iseof(1)   # expect: False
r = read(1, 1, 1)
print iseof(1)   # expect: True
open "empty" as 2
print iseof(2)   # expect: True
open "empty" as 3 text
print iseof(3)   # expect: True
