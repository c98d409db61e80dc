_x = 5  # problem: unknown-character@1
