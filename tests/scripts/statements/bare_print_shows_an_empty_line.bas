print
# expect:
print # a comment
# expect:
print "a"           # expect: a
