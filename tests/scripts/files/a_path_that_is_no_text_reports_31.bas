open 5 as 1   # expect error 31: Invalid argument type
x = Nothing
open x as 1   # expect error 31: Invalid argument type
print "on"    # expect: on
