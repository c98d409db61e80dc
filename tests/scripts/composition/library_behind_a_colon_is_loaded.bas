: library "lib.bas"
print "main"        # expect: main
# expect: library
