# The list does not end on ")", and then no ")" follows the call.
x = max(1, 2        # expect error 22: Incorrect function call
print "on"          # expect: on
# expect error 22: Incorrect function call
