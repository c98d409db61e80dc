event create alarm
print "behind"  # expect error 1: Syntax error
# expect: behind
