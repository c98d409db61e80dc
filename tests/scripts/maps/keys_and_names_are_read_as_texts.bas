map create 5
call mapset(5, 1, "number")
call mapset("5.000000", int(1), "integer")
print mapget(5, "1.000000")         # expect: number
print mapget("5.000000", "1")       # expect: integer
call mapset(5, maphas(5, "x"), "truth")
print mapget(5, "False")            # expect: truth
dim unset
call mapset(5, unset, "empty")
print mapget(5, "")                 # expect: empty
