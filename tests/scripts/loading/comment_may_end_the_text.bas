print "a"           # expect: a
# the last line is a comment without a line break