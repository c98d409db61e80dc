print "a;b,c'd(e)[f]:g#h"  # expect: a;b,c'd(e)[f]:g#h
