x =
print "on"          # expect: on
# expect error 0: Error loading resource string.
