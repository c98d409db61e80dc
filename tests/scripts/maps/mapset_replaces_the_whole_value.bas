map create "m"
dim a[3]
a[2] = 5
call mapset("m", "k", a)
call mapset("m", "k", "one")
b = mapget("m", "k")
print b; ubound("b")  # expect: one1
