# Deliberate: 2.5 cubes, 1.5 squares.
print 2^2.5         # expect: 8.000000
print 2^1.5         # expect: 4.000000
