map create "m"
dim a[2]
a[0] = "first"
a[1] = "second"
call mapset("m", "a", a)
v = mapgetvalues("m")
print v  # expect: first
