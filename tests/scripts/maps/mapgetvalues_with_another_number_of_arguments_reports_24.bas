map create "m"
call mapset("m", "k", 5)
call mapgetvalues()   # expect error 24: Incorrect number of function parameters
call mapgetvalues("m", "k")  # expect error 24: Incorrect number of function parameters
call mapgetvalues()        # expect error 24: Incorrect number of function parameters
print mapget("m", "k")  # expect: 5.000000
x = mapgetvalues("m", "k")  # expect error 24: Incorrect number of function parameters
print "behind"  # expect: behind
