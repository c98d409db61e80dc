x = 1
watch x  # expect error 1: Syntax error
watch "x"  # expect error 1: Syntax error
watch 1  # expect error 1: Syntax error
print "behind"  # expect: behind
