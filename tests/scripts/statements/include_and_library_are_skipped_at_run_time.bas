print "a" library "missing.bas" print "b"
# expect: a
print "c" include "missing.bas" print "d"
# expect: c
