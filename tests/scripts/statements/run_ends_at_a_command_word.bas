if 1 = 1 then run "child.bas" endif print "parent"
# expect: child
# expect: parent
