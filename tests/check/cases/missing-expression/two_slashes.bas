x = 5 // half  # problem: missing-expression@7
