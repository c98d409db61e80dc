x = "
function hidden()
endfunction
"
# function hidden()
rem function hidden()
y = hidden()   # expect error 21: Undefined function name
print "on"     # expect: on
