n = "a"
map create n + "b"
call mapset("ab", "k", 1)
print maphas("ab", "k"); maphas("a" + "b", "k")  # expect: TrueTrue
map clear n + "b"
print maphas("ab", "k")                          # expect: False
