map create "m"
call mapset("m", "only", "v")
x = mapgetkeys("m")
v = mapgetvalues("m")
print x; v; ubound("x"); ubound("v")  # expect: onlyv11
