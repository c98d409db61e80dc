open "out" for output as 1 text
x = writeline(1)   # expect error 24: Incorrect number of function parameters
