runexe "./tool.sh" : print "on"
# expect: on
