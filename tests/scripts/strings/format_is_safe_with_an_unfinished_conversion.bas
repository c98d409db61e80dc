x = format(1, "%")
x = format(1, "abc%")
x = format(1, "%5")
x = format(1, "%n")
x = format("text", "%n%s%n")
x = format(1, "%*d")
x = format(1, "%*.*f")
x = format(1, "%y")
print "on"   # expect: on
