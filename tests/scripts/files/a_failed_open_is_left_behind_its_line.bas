open "nope" as 1 print "not reached"   # expect error 47: File does not exist
print "on"                             # expect: on
