x = 1  # expect error 23: Incorrect function definition
declare sub beep lib "nettle" (byval a as integer)
call beep(1)
print "on"  # expect: on
