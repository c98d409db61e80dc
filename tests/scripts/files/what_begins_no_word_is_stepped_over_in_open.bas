open "new.txt" for output _ as 1 _ text
x = writeline(1, "one")
close 1
open "new.txt" for input as 1 text
print readline(1)    # expect: one
