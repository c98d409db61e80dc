print "a" : end : print "b"
# expect: a
