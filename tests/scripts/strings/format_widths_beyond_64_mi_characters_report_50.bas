x = format(1, "%67108865d")                 # expect error 50: Brindle unrecoverable error
x = format(1, "%.67108865f")                # expect error 50: Brindle unrecoverable error
x = format("a", "%99999999999999999999s")   # expect error 50: Brindle unrecoverable error
print "on"                                  # expect: on
