open "box" as 1              # expect error 47: File does not exist
open "box" as 1 text         # expect error 47: File does not exist
open "box" for output as 1   # expect error 47: File does not exist
print "on"                   # expect: on
