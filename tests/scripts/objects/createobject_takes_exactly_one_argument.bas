o = createobject()                          # expect error 24: Incorrect number of function parameters
o = createobject("Brindle.FileSystem", 1)   # expect error 24: Incorrect number of function parameters
print "on"                                  # expect: on
