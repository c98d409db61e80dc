open "long.bas" for output as 1 text
n = writeline(1, "print 0" + repeat("+1", 100000))
close 1
# expect: 100000.000000
run "long.bas"
