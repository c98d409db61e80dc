goto Start  # problem: unknown-label@6
start:  # problem: unused-label@1
print "on"
