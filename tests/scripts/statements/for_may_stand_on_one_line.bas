for i = 1 to 2 print "a" next print "b"
# expect: a
# expect: a
# expect: b
