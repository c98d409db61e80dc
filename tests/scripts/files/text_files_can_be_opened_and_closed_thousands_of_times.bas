for n = 1 to 3000
  open "data" as 1 text
  close 1
next
open "data" as 1 text
print readline(1)   # expect: abc
