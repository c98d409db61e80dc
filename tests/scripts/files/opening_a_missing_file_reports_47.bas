open "nope" as 1                     # expect error 47: File does not exist
open "nope" for input as 1           # expect error 47: File does not exist
open "nope" as 1 text                # expect error 47: File does not exist
open "nope/deeper" for output as 1   # expect error 47: File does not exist
x = filesize(1)                      # expect error 49: Invalid file handle
