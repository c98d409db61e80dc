open "data" as 1
x = readlist(1, ",")
print "on"
