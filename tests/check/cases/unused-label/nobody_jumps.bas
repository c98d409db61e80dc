again:  # problem: unused-label@1
print "on"
