open "data" as 1 text
close 1
x = readline(1)   # expect error 49: Invalid file handle
open "data" as 2
close 2
x = filesize(2)   # expect error 49: Invalid file handle
