print max(0 / 0, 1)      # expect: nan
print max(1, 0 / 0)      # expect: 1.000000
print min(0 / 0, 1)      # expect: nan
print min(1, 0 / 0)      # expect: 1.000000
print max(1, 0 / 0, 2)   # expect: 2.000000
