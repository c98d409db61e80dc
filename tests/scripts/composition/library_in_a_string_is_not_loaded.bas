print "a
library b
"
# expect: a
# expect: library b
# expect:
