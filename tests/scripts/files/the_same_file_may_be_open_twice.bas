open "data" as 1 text
open "data" as 2 text
print readline(1); readline(1); readline(2)   # expect: onetwoone
