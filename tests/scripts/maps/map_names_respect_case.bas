map create "m"
map create "M"
call mapset("m", "k", 1)
print maphas("M", "k"); maphas("m", "k")  # expect: FalseTrue
