function twice()    # expect error 28: Function declaration found in main program code
# expect error 18: Unexpected operator
endfunction
