Total = 5
print total   # expect: 5.000000
TOTAL = 6
print Total   # expect: 6.000000
