x = 1 +  # problem: missing-expression@10
