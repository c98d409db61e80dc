print "x "; x; " Y "; Y; " ."
x = 5
Y = 6
