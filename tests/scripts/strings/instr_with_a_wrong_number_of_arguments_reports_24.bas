x = instr("abc")           # expect error 24: Incorrect number of function parameters
x = instr("abc", "b", 0)   # expect error 24: Incorrect number of function parameters
x = instr()                # expect error 24: Incorrect number of function parameters
print "on"                 # expect: on
