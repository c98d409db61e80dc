map create "m"
call mapset("m", "k", 1)
map create "m"
print maphas("m", "k")  # expect: False
call mapset("m", "j", 2)
x = mapgetkeys("m")
print x                 # expect: j
