print "part"
include "part.bas" # itself
