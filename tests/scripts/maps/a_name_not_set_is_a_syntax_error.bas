dim m
map create m  # expect error 1: Syntax error
map clear m   # expect error 1: Syntax error
map remove m  # expect error 1: Syntax error
print "behind"  # expect: behind
