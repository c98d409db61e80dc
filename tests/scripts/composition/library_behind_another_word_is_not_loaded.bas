print "main" library "lib.bas"
# expect: main
