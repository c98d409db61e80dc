map create m  # expect error 1: Syntax error
# expect error 3 anywhere: No expression present
print "behind"  # expect: behind
