rem library "missing.bas"
# library "missing.bas"
rem : include "missing.bas"
# : include "missing.bas"
print "main"        # expect: main
