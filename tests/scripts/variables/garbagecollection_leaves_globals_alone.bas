global Kept
Kept = 1
global z__#2
z__#2 = 2
print garbagecollection()   # expect: 1
print Kept                  # expect: 1.000000
print "["; z__#2; "]"       # expect: []
