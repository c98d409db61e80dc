a = close  # problem: word-as-name@5
