map create "m"
call mapset("m", "Höhe °", 5)
x = mapgetkeys("m")
print x; maphas("m", "Höhe °"); maphas("m", "höhe °")  # expect: Höhe °TrueFalse
