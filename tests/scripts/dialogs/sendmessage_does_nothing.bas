x = 5
call sendmessage(1, 2, 3)
print "on"
# expect: on
