print nope          # expect:
print "a"; nope; "b"  # expect: ab
print nope, "b"     # expect:         b
