# The names are compared as written.
library "lib.bas"
library "./lib.bas"
print "main"        # expect: main
# expect: library
# expect: library
