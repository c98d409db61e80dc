x = print "a"       # expect error 0: Error loading resource string.
# expect: a
