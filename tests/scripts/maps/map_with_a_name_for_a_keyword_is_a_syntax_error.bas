map m  # expect error 1: Syntax error
map "m"  # expect error 1: Syntax error
print "behind"  # expect: behind
