x = 1
watch create x
print "behind"  # expect error 1: Syntax error
# expect: behind
