print "before"              # expect: before
# answer: cancel
x = dbfnumrecords(-5)       # expect error 57: Invalid dBase file handle
print "never"
