open "out" for output as 1 text
n = writeline(1, repeat("abcdefghij", 10000))
close 1
open "out" as 2
print int(filesize(2))   # expect: 100000
