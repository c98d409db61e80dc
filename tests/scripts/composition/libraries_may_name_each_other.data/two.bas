library "one.bas"
print "two"
