library "one.bas"
print "main"        # expect: main
# expect: one
# expect: two
