x = nofunction()    # expect error 21: Undefined function name
print "on"          # expect: on
