print "on"          # expect: on
goto last
print "skipped"
last:
