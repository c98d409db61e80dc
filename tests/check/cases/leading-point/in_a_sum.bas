x = 1 + .5  # problem: leading-point@9
