x = dbfwrite(-1)            # expect error 57: Invalid dBase file handle
x = dbfappend(-1)           # expect error 57: Invalid dBase file handle
x = dbfseek(-1)             # expect error 24: Incorrect number of function parameters
x = dbfdelete(-1)           # expect error 24: Incorrect number of function parameters
