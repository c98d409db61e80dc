half = repeat("a", 33554433)
x = half + half   # expect error 50: Brindle unrecoverable error
print "on"        # expect: on
