open "data" for reading as 1   # expect error 1: Syntax error
x = filesize(1)                # expect error 49: Invalid file handle
open "data" for 5 as 1         # expect error 1: Syntax error
