dim a as  # problem: unknown-type@5
b = 1
print b + 1
