map create "m"
x = mapget("m", "nope")
print x            # expect: 0.000000
print ubound("x")  # expect: 1
x = x + 1
print x            # expect: 1.000000
