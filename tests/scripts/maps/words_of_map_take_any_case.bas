MAP Create "m"
call MapSet("m", "k", 1)
print MAPHAS("m", "k")  # expect: True
map CLEAR "m"
print mapHas("m", "k")  # expect: False
