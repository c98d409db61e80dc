print 1 + nope      # expect: 1.000000
# expect error 3: No expression present
print "on"          # expect: on
