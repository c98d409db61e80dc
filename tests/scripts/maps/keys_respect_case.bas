map create "m"
call mapset("m", "k", 1)
call mapset("m", "K", 2)
print mapget("m", "k"); " "; mapget("m", "K")  # expect: 1.000000 2.000000
x = mapgetkeys("m")
print ubound("x")                              # expect: 2
