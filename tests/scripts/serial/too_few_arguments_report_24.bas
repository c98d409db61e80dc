x = comportopen()      # expect error 24: Incorrect number of function parameters
x = comportclose()     # expect error 24: Incorrect number of function parameters
x = comportread()      # expect error 24: Incorrect number of function parameters
x = comportwrite()     # expect error 24: Incorrect number of function parameters
x = comportwrite(9999) # expect error 24: Incorrect number of function parameters
