größe = 2
print größe + 1     # expect: 3.000000
