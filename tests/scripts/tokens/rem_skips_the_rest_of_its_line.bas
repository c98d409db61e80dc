rem print "a" : print "b"
print "c" rem print "d"
# expect: c
REM
print "e"           # expect: e
