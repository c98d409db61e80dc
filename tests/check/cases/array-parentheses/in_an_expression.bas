dim a[3]
x = a(1)  # problem: array-parentheses@5
