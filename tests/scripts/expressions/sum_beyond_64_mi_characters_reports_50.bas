a = repeat("a", 33554433)
b = a + a           # expect error 50: Brindle unrecoverable error
print "on"          # expect: on
