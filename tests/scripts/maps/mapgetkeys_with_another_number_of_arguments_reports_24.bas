map create "m"
call mapset("m", "k", 5)
call mapgetkeys()   # expect error 24: Incorrect number of function parameters
call mapgetkeys("m", "k")  # expect error 24: Incorrect number of function parameters
call mapgetkeys()        # expect error 24: Incorrect number of function parameters
print mapget("m", "k")  # expect: 5.000000
x = mapgetkeys("m", "k")  # expect error 24: Incorrect number of function parameters
print "behind"  # expect: behind
