global q__#1
q__#1 = 5
print q   # expect: 5.000000
