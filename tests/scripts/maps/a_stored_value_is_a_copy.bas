map create "m"
x = 1
call mapset("m", "k", x)
x = 2
print mapget("m", "k")  # expect: 1.000000
y = mapget("m", "k")
y = 3
print mapget("m", "k")  # expect: 1.000000
dim a[2]
a[0] = 1
call mapset("m", "a", a)
a[0] = 9
b = mapget("m", "a")
print b[0]              # expect: 1.000000
