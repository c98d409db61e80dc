a$ = "x"  # problem: type-suffix@1
