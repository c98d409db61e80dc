print "abc";
print "d", "e"      # expect: abcd       e
