map create "m" : call mapset("m", "k", 1) print maphas("m", "k") map clear "m" print maphas("m", "k")
# expect: True
# expect: False
