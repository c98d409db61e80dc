print "a"           # expect: a
# answer: cancel
next                # expect error 55: Illegal NEXT statement.
print "never"
