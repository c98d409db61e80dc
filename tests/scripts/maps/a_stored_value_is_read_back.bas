map create "m"
call mapset("m", "k", 2.5)
call mapset("m", "t", "text")
call mapset("m", "i", int(7))
print mapget("m", "k"); mapget("m", "t"); mapget("m", "i")  # expect: 2.500000text7
