run "child.bas"  # expect: hi
print "behind"  # expect: behind
