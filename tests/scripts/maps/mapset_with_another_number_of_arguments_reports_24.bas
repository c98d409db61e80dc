map create "m"
call mapset("m", "k", 5)
call mapset("m", "k")   # expect error 24: Incorrect number of function parameters
call mapset("m", "k", 1, 2)  # expect error 24: Incorrect number of function parameters
call mapset()        # expect error 24: Incorrect number of function parameters
print mapget("m", "k")  # expect: 5.000000
x = mapset("m", "k", 1, 2)  # expect error 24: Incorrect number of function parameters
print "behind"  # expect: behind
