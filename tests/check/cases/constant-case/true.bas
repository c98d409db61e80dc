x = true  # problem: constant-case@5
