print "a"# a comment
# expect: a
