print "["; nope; "]"   # expect: []
print nope; 5          # expect: 5.000000
