a = 1
b = a: c = 3  # problem: missing-expression@5
print c
