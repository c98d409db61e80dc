watch create "x"  # expect error 1: Syntax error
watch create 5  # expect error 1: Syntax error
watch remove print  # expect error 1: Syntax error
watch remove text  # expect error 1: Syntax error
print "behind"  # expect: behind
