Library "one.bas"
INCLUDE "two.bas"
# expect: two
print "main"        # expect: main
# expect: one
# expect: two
