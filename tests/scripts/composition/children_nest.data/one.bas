print "one"
run "two.bas"
print "one again"
