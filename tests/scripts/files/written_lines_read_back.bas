open "out" for output as 1 text
n = writeline(1, "eins ä" + format(10, "%c"))
n = writeline(1, format(10, "%c"))
n = writeline(1, "drei" + format(10, "%c"))
p = seek(1, 0)
print "["; readline(1); "]["; readline(1); "]["; readline(1); "]"   # expect: [eins ä][][drei]
