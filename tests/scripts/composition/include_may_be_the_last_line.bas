print "main"        # expect: main
# expect: part
# expect: part
include "part.bas"