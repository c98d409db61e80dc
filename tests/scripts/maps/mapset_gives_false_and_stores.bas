map create "m"
print maphas("m", "k")     # expect: False
print mapset("m", "k", 1)  # expect: False
print maphas("m", "k")     # expect: True
