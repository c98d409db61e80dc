a = b$  # problem: type-suffix@5
