x = nope[2]
print "["; x; "]"         # expect: []
print "["; nope[0]; "]"   # expect: []
