open "data" as 1
x = seek(1)   # expect error 24: Incorrect number of function parameters
