a = 1
print str(a > 0)  # problem: comparison-in-expression@13
