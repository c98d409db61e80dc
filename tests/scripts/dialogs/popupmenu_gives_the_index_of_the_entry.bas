dim more[2]
more[0] = "-"
more[1] = "last"
print popupmenu("first", "second", more)
# input: 1
# expect: 1
print popupmenu("first", "second", more)
# input: 3
# expect: 3
print popupmenu("first", "second", more)
# expect: -1
