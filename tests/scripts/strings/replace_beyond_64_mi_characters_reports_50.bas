long = repeat("a", 10000)
x = replace(long, "a", long)   # expect error 50: Brindle unrecoverable error
print "on"                     # expect: on
