map create "m"
dim unset
call mapset("m", "a", unset)
call mapset("m", "b", 5)
call mapset("m", "c", unset)
x = mapgetkeys("m")
v = mapgetvalues("m")
print ubound("x"); ubound("v"); v[0]; "["; v[1]; "]"  # expect: 325.000000[]
print maphas("m", "a"); "["; mapget("m", "a"); "]"    # expect: True[]
