if 1 = 1 then print "a"; endif
if 1 = 2 then print "x"; endif
print "b"; : print "c"  # expect: abc
