goto a
print "never"  # problem: unreachable-code@1
a:
print "on"
