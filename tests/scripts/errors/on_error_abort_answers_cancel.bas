# options: --ui=console --on-error=abort
print "a"           # expect: a
next                # expect error 55: Illegal NEXT statement.
print "never"
