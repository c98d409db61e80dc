do                  # expect error 1: Syntax error
# expect error 54: "While" keyword is missing.
print "on"          # expect: on
