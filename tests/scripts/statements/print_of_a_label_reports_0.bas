# "total:" is a label token and no item.
total = 5
print total: print "on"
# expect:
# expect error 0: Error loading resource string.
# expect: on
