map create ""
call mapset("", "", 5)
print maphas("", ""); mapget("", "")  # expect: True5.000000
