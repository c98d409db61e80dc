goto
print "on"          # expect: on
# expect error 7: Duplicate label
