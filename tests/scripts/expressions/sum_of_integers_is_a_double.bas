print int(2) + int(3)  # expect: 5.000000
print True + True   # expect: 2.000000
