map create "m"
call mapset("m", "k", 1)
print mapremove("m", "x")  # expect: False
print mapremove("m", "K")  # expect: False
print mapremove("m", "k")  # expect: True
print mapremove("m", "k")  # expect: False
print maphas("m", "k")     # expect: False
print mapremove("n", "k")  # expect: False
