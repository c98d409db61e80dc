map create "m"
call mapset("m", "k", 5)
call maphas("m")   # expect error 24: Incorrect number of function parameters
call maphas("m", "k", 1)  # expect error 24: Incorrect number of function parameters
call maphas()        # expect error 24: Incorrect number of function parameters
print mapget("m", "k")  # expect: 5.000000
x = maphas("m", "k", 1)  # expect error 24: Incorrect number of function parameters
print "behind"  # expect: behind
