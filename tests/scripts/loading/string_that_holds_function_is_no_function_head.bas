x = "function"
y = "function"
x = "sub"
y = "sub"
print "on"          # expect: on
