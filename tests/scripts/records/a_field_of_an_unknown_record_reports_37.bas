p.x = 1    # expect error 37: Undefined variable
a = p.x    # expect error 37: Undefined variable
