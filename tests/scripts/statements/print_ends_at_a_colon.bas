print "a" : print "b"
# expect: a
# expect: b
