x 5                 # expect error 3: No expression present
x                   # expect error 3: No expression present
print "on"          # expect: on
