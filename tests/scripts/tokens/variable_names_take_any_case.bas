Total = 5
print tOTAL         # expect: 5.000000
