map create "m"
dim a[3]
a[0] = 1
a[1] = "two"
a[2] = 3.5
call mapset("m", "k", a)
b = mapget("m", "k")
print ubound("b"); b[0]; b[1]; b[2]  # expect: 31.000000two3.500000
