print "child"
next
print "never"
