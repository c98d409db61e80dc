left = 5
print left + 1      # expect: 6.000000
