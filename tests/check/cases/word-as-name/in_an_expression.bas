x = value + 1  # problem: word-as-name@5
