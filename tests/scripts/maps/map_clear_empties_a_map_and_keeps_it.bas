map create "m"
call mapset("m", "k", 1)
call mapset("m", "j", 1)
map clear "m"
print maphas("m", "k")  # expect: False
call mapset("m", "i", 2)
x = mapgetkeys("m")
print x                 # expect: i
