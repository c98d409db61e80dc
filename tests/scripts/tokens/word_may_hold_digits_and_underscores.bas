a_1b = 5
print a_1b          # expect: 5.000000
