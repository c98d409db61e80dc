include "part.bas"
# expect: part
print "between"     # expect: between
include "part.bas"
# expect: part
print "after"       # expect: after
# expect: part
