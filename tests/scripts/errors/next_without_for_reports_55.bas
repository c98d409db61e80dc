next                # expect error 55: Illegal NEXT statement.
print "on"          # expect: on
