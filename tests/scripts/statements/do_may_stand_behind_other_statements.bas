n = 0 : do while n < 2 n = n + 1 print n loop print "on"
# expect: 1.000000
# expect: 2.000000
# expect: on
