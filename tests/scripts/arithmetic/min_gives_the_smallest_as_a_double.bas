print min(3, 7, 5)                  # expect: 3.000000
print min(int(3), int(7))           # expect: 3.000000
print min(-3, -7)                   # expect: -7.000000
print min("9", "10")                # expect: 9.000000
print min(1, -1 / 0)                # expect: -inf
print min(8, 7, 6, 5, 4, 3, 2, 1)   # expect: 1.000000
