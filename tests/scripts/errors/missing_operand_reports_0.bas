print 2 +           # expect: 2.000000
# expect error 0: Error loading resource string.
print "on"          # expect: on
