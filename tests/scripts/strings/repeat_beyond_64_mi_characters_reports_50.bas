x = repeat("ab", 33554433)   # expect error 50: Brindle unrecoverable error
x = repeat("a", 1e30)        # expect error 50: Brindle unrecoverable error
print "on"                   # expect: on
