goto  # problem: unknown-label@1
print "behind"
