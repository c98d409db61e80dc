open "nope" for append as 1        # expect error 47: File does not exist
open "nope" for append as 1 text   # expect error 47: File does not exist
r = findfiles("nope", 0)
print "["; r; "]"                  # expect: []
