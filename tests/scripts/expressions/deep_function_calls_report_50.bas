open "deep.bas" for output as 1 text
n = writeline(1, "x = " + repeat("len(", 1000000))
close 1
run "deep.bas"
print "on"          # expect: on
# expect error 50 anywhere: Brindle unrecoverable error
