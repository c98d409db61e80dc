event alarm  # expect error 1: Syntax error
event "alarm"  # expect error 1: Syntax error
event 1      # expect error 1: Syntax error
print "behind"  # expect: behind
