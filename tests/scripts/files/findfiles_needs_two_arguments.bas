r = findfiles("*")   # expect error 24: Incorrect number of function parameters
r = findfiles()      # expect error 24: Incorrect number of function parameters
