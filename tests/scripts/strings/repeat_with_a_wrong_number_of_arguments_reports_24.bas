x = repeat("ab")   # expect error 24: Incorrect number of function parameters
x = repeat()       # expect error 24: Incorrect number of function parameters
print "on"         # expect: on
