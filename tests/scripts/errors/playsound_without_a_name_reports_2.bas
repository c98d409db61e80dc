playsound           # expect error 2: Unbalanced parens
print "on"          # expect: on
