map create "m"
call mapset("m", "a", "b")
call mapset("m", "b", "c")
print mapget("m", mapget("m", "a"))  # expect: c
