x = "a
b"
print x
