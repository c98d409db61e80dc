open "data" as 1
r = read(1, -1, 1)   # expect error 50: Brindle unrecoverable error
print "on"           # expect: on
