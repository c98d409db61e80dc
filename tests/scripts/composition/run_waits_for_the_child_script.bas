print "before"      # expect: before
run "child.bas"
# expect: child
print "after"       # expect: after
