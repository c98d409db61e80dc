# The colon is looked for before the command table is.
goto next
print "skipped"
next:
print "on"          # expect: on
