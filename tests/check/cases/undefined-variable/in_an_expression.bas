x = y + 1  # problem: undefined-variable@5
