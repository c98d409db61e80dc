goto past function hidden()
past:
x = hidden()   # expect error 21: Undefined function name
print "on"     # expect: on
