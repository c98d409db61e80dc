encrypted = 5
print encrypted  # expect: 5.000000
