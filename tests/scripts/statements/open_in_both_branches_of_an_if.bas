h = 0
if h = 1 then open "log" for append as 1 text else open "log" for output as 1 text endif
n = writeline(1, "one ")
close 1
h = 1
if h = 1 then open "log" for append as 1 text else open "log" for output as 1 text endif
n = writeline(1, "two")
close 1
open "log" for input as 1 text
print readline(1)   # expect: one two
