print "a"           # expect: a
for i = 2 to 1
print "skipped"
