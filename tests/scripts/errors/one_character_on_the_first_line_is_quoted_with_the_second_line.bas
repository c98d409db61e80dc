5
print "never"
