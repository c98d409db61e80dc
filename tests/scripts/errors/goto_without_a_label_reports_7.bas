goto                # expect error 7: Duplicate label
print "on"          # expect: on
