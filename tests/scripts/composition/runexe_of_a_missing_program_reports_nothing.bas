runexe "./missing.sh"
print "on"          # expect: on
