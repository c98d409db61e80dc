print max(3, 7, 5)                  # expect: 7.000000
print max(int(3), int(7))           # expect: 7.000000
print max(-3, -7)                   # expect: -3.000000
print max("9", "10")                # expect: 10.000000
print max(1, 1 / 0)                 # expect: inf
print max(5, 5)                     # expect: 5.000000
print max(1, 2, 3, 4, 5, 6, 7, 8)   # expect: 8.000000
