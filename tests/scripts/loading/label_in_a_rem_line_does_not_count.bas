rem a: the label of the same name below is no duplicate
goto a
print "skipped"
a:
print "on"          # expect: on
