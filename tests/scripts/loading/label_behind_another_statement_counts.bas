goto middle
print "skipped" middle: print "on"  # expect: on
