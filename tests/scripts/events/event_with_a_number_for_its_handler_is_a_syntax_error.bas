event create alarm 5  # expect error 1: Syntax error
event create alarm print  # expect error 1: Syntax error
event create alarm text  # expect error 1: Syntax error
throw alarm(1)
print "behind"  # expect: behind
