x = 5
dim x
print x   # expect: 5.000000
