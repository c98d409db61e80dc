open "out" for output as 1 text
n = writeline(1, "eins ä€😀" + format(10, "%c"), "UTF16")
n = writeline(1, "zwei" + format(10, "%c"))
close 1
open "out" as 1 text
print readline(1)   # expect: eins ä€😀
print readline(1)   # expect: zwei
print iseof(1)      # expect: True
