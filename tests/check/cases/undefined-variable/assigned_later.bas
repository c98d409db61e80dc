x = y  # problem: undefined-variable@5
y = 1
