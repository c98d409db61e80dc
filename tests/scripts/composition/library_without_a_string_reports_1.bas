library lib         # expect error 1: Syntax error
print "main"        # expect: main
