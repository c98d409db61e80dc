a = 5
dim a
print a
