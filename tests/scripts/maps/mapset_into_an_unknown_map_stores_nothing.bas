print mapset("m", "k", 1)  # expect: False
print maphas("m", "k")     # expect: False
print mapget("m", "k")     # expect: 0.000000
map create "m"
print maphas("m", "k")     # expect: False
