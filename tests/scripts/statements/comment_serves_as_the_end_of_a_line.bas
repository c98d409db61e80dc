dim x # counter
dim y[3] # three of them
global Z # seen everywhere
open "made.txt" for output as 1 text # a new file
close 1 # and done
print ubound("y")   # expect: 3
