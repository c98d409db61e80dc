library "one.bas"
library "two.bas"
print "main"        # expect: main
# expect: one
# expect: two
