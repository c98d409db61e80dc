print format(1 / 0, "%f")      # expect: inf
print format(-1 / 0, "%.2f")   # expect: -inf
print format(0 / 0, "%f")      # expect: nan
