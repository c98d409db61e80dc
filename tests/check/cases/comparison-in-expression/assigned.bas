a = 1
x = a = 2  # problem: comparison-in-expression@7
