print "a"           # expect: a
# expect error 55 at "\nnext": Illegal NEXT statement.
next
