run "child.bas"
# expect: child
print "on"          # expect: on
