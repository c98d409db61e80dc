dim a$  # problem: type-suffix@6
