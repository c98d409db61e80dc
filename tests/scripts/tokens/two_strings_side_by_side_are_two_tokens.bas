x = "a""b"          # expect error 18: Unexpected operator
print "never"
