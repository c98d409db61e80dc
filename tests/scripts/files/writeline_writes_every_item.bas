dim a[4]
a[0] = "x"
a[1] = 2.5
a[2] = int(-7)
open "out" for output as 1 text
print int(writeline(1, a))   # expect: 4
close 1
open "out" as 1 text
print readline(1)            # expect: x2.500000-7
