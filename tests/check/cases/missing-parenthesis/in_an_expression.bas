x = (1 + 2  # problem: missing-parenthesis@5
