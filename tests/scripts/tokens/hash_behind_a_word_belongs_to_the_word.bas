a#1 = 5
print a#1           # expect: 5.000000
