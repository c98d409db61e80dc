open "empty" as 1
b = iseof(1)
print format(b, "%f")   # expect: 1.000000
print format(b, "%d")   # expect: 1
