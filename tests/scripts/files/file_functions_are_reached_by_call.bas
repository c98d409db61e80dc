open "out" for output as 1 text
call writeline(1, "abc")
call seek(1, 1)
print readline(1)   # expect: bc
