run "child.bas", "one", 2
# expect: child
