print "a"           # expect: a
goto


print "on"          # expect: on
# expect error 7 at "\ngoto": Duplicate label
