goto "place"
print "skipped"
place:
print "on"          # expect: on
