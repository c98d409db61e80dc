library "sub/one.bas"
print "main"        # expect: main
# expect: one
# expect: beside the script
