print "a"           # expect: a
next : rem grün € 漢 😀  # expect error 55: Illegal NEXT statement.
