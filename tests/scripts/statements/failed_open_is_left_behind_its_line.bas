open "missing.txt" for input as 1 text print "skipped"  # expect error 47: File does not exist
print "on"          # expect: on
