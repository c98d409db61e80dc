function twice()
endfunction
# expect error 27 at "\nfunction twice()": Duplicate function definition
# expect error 28 at "function twice()": Function declaration found in main program code
# expect error 18 at "function twice()": Unexpected operator
function twice()
endfunction
