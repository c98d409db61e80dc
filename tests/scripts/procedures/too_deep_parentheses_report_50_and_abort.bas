open "deep.bas" for output as 1 text
n = writeline(1, "x = ")
n = writeline(1, repeat("(", 200000))
n = writeline(1, "1")
n = writeline(1, repeat(")", 200000))
n = writeline(1, format(10, "%c") + "print 1")
close 1
run "deep.bas"
# expect error 50 anywhere: Brindle unrecoverable error
print "on"   # expect: on
