print "before"      # expect: before
include "part.bas"
# expect: part
print "after"       # expect: after
# expect: part
