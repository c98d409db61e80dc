print "a";
print "b"           # expect: ab
