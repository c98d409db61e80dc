close 1
close 257
close 0
close -1
print "on"   # expect: on
