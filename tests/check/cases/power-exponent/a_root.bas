print 2 ^ 0.5  # problem: power-exponent@9
print 2 ^ -1   # problem: power-exponent@9
print 2 ^ 3
