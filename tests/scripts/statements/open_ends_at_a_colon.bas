open "made.txt" for output as 1 text : n = writeline(1, "kept") : close 1
open "made.txt" for input as 1 text : print readline(1)  # expect: kept
