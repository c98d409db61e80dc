library "lib.bas"
goto place
print "skipped"
# expect: library
