print "a: no label"  # expect: a: no label
goto a
print "skipped"
a:
print "on"          # expect: on
