name = "child"
run name + ".bas"
# expect: child
