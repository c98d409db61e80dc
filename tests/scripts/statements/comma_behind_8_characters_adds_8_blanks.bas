print "abcdefgh", "x"  # expect: abcdefgh        x
print "", "x"       # expect:         x
