event create alarm nowhere  # expect error 21: Undefined function name
event remove alarm nowhere    # expect error 21: Undefined function name
throw alarm("x")
print "behind"  # expect: behind
