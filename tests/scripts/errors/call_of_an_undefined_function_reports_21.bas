call nofunction(1, 2)  # expect error 21: Undefined function name
print "on"          # expect: on
