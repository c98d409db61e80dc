wait
print "on"          # expect: on
# expect error 3: No expression present
