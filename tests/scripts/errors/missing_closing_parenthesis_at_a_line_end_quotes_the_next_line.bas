# expect: 3.000000
print (1 + 2
print "on"          # expect: on
# expect error 1: Syntax error
