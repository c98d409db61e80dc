# answer: cancel
run "child.bas"
# expect: child
# expect error 55 at "\nnext": Illegal NEXT statement.
print "on"          # expect: on
