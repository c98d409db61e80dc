print sqr("16 m")   # expect: 4.000000
print int("-2.7")   # expect: -2
print sin("abc")    # expect: 0.000000
print abs("")       # expect: 0.000000
