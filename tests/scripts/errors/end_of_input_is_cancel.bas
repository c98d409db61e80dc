# answer: end of input
next                # expect error 55: Illegal NEXT statement.
print "never"
