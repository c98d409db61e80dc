goto a
a:
print "x"
a:  # problem: duplicate-label@1
