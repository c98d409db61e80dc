print "outer"
include "inner.bas"
print "outer again"
