dim title  # problem: word-as-name@5
