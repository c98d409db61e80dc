run "one.bas"
# expect: one
# expect: two
# expect: one again
print "main"        # expect: main
