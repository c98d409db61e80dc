dim a[3]
a(1) = 5  # problem: array-parentheses@1
