b = 1
print "a" + b  # problem: print-literal@11
