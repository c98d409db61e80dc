print "hi"  # expect: hi
encrypt
print "plain"  # expect: plain
