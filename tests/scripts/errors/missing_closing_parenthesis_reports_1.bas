print (1 + 2        # expect: 3.000000
# expect error 1: Syntax error
print "on"          # expect: on
