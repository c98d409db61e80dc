# expect: 5.000000
open "big.bas" for output as 1 text
n = writeline(1, "print 5")
for i = 1 to 63
  n = writeline(1, repeat(" ", 1048576))
next
n = writeline(1, repeat(" ", 1048000))
close 1
run "big.bas"
print "on"          # expect: on
