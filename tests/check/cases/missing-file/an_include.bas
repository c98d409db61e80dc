include "nowhere.bas"  # problem: missing-file@9
print "on"
