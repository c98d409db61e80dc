open "data" as 1
x = writeline(1, "x")
print "on"
