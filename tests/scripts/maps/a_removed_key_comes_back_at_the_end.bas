map create "m"
call mapset("m", "a", 1)
call mapset("m", "b", 2)
call mapset("m", "c", 3)
call mapremove("m", "a")
call mapset("m", "a", 4)
x = mapgetkeys("m")
v = mapgetvalues("m")
print x[0]; x[1]; x[2]; ubound("x")    # expect: bca3
print int(v[0]); int(v[1]); int(v[2])  # expect: 234
