x = .5  # problem: leading-point@5
