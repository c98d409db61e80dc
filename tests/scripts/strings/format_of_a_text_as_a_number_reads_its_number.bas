print format("12", "%f")        # expect: 12.000000
print format("2.5kg", "%.1f")   # expect: 2.5
print format("x", "%.2f")       # expect: 0.00
