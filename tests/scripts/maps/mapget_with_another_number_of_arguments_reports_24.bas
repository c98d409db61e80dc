map create "m"
call mapset("m", "k", 5)
call mapget("m")   # expect error 24: Incorrect number of function parameters
call mapget("m", "k", 1)  # expect error 24: Incorrect number of function parameters
call mapget()        # expect error 24: Incorrect number of function parameters
print mapget("m", "k")  # expect: 5.000000
x = mapget("m", "k", 1)  # expect error 24: Incorrect number of function parameters
print "behind"  # expect: behind
