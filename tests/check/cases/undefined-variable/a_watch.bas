watch create x changed  # problem: undefined-variable@14
