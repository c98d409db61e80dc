open "deep.bas" for output as 1 text
n = writeline(1, "print " + repeat("(", 200) + "1" + repeat(")", 200))
close 1
# expect: 1.000000
run "deep.bas"
