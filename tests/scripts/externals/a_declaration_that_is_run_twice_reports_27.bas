for i = 1 to 2
  declare function beep lib "nowhere" (byval a as integer) as integer  # expect error 27: Duplicate function definition
next
print "on"  # expect: on
