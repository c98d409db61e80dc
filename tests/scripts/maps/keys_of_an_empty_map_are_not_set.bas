map create "m"
x = mapgetkeys("m")
print "["; x; "]"; ubound("x")  # expect: []0
v = mapgetvalues("m")
print "["; v; "]"; ubound("v")  # expect: []0
