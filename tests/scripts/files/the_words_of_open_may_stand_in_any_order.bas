open "one" text as 1 for output
n = writeline(1, "one")
close 1
open "two" as 2 for output text
n = writeline(2, "two")
close 2
open "one" text for input as 1
print readline(1)   # expect: one
OPEN "two" AS 2 TEXT FOR INPUT
print readline(2)   # expect: two
