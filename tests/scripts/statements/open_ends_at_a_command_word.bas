open "made.txt" for output as 1 text print "open" close 1 print "closed"
# expect: open
# expect: closed
