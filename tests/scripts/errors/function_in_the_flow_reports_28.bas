# The name and its list are then read as a statement.
print "a"           # expect: a
function work()     # expect error 28: Function declaration found in main program code
# expect error 18: Unexpected operator
endfunction
