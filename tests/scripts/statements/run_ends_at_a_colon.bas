run "child.bas" : print "parent"
# expect: child
# expect: parent
