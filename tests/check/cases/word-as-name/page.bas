page = 1  # problem: word-as-name@1
