x =
# problem on line 1: missing-expression@4
