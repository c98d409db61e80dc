dim a(10)  # problem: array-parentheses@5
