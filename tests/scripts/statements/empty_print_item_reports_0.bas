print "a", , "b"    # expect: a               b
# expect error 0: Error loading resource string.
