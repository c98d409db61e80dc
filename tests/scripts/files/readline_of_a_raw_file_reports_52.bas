open "data" as 1
x = readline(1)
print "on"
