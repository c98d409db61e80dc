.5  # problem: leading-point@1
