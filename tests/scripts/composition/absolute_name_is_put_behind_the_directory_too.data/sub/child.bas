library "/lib.bas"
print "child"
