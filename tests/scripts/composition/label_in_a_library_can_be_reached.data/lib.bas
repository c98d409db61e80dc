print "skipped"
place:
print "library"
