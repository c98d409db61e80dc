print "a"           # expect: a
else
print "skipped"
endif
print "on"          # expect: on
