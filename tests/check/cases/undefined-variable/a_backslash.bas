a = 7
b = 2
c = a\b  # problem: undefined-variable@5
