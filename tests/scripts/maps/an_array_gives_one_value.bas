map create "m"
dim a[3]
a[0] = "first"
a[1] = "second"
a[2] = "third"
call mapset("m", "a", a)
call mapset("m", "b", "plain")
v = mapgetvalues("m")
print ubound("v"); v[0]; v[1]  # expect: 2firstplain
