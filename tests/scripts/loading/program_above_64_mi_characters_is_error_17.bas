# One character more than fits.
open "big.bas" for output as 1 text
for i = 1 to 64
  n = writeline(1, repeat(" ", 1048576))
next
n = writeline(1, "  ")
close 1
run "big.bas"
print "on"          # expect: on
# expect error 17 at "": Not enough memory to load source file
