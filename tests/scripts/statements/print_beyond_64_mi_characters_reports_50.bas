s = repeat("a", 33554433)
print s; s          # expect error 50: Brindle unrecoverable error
print "on"          # expect: on
