library "two.bas"
print "one"
