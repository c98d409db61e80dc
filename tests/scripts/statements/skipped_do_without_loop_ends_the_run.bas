print "a"           # expect: a
do while 1 = 2
print "skipped"
