dim a b      # expect error 1: Syntax error
print "on"   # expect: on
