map create "m"
call mapset("m", "k", 5)
call mapremove("m")   # expect error 24: Incorrect number of function parameters
call mapremove("m", "k", 1)  # expect error 24: Incorrect number of function parameters
call mapremove()        # expect error 24: Incorrect number of function parameters
print mapget("m", "k")  # expect: 5.000000
x = mapremove("m", "k", 1)  # expect error 24: Incorrect number of function parameters
print "behind"  # expect: behind
