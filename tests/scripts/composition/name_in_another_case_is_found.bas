library "SUB\LIB.BAS"
print "main"        # expect: main
# expect: library
