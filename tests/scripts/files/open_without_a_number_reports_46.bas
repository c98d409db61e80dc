open "data"             # expect error 46: File number is out of valid range
open "data" for input   # expect error 46: File number is out of valid range
open "data" text        # expect error 46: File number is out of valid range
print "on"              # expect: on
