stayresident
print "on"          # expect: on
