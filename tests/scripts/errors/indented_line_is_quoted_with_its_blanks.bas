print "a"           # expect: a
# expect error 55 at "\n \t next": Illegal NEXT statement.
 	 next
