run "sub/child.bas"
# expect: child
# expect: beside the child
