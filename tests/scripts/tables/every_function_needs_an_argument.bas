x = dbfopen()               # expect error 24: Incorrect number of function parameters
x = dbfcreate()             # expect error 24: Incorrect number of function parameters
x = dbfclose()              # expect error 24: Incorrect number of function parameters
x = dbfread()               # expect error 24: Incorrect number of function parameters
x = dbfwrite()              # expect error 24: Incorrect number of function parameters
x = dbfappend()             # expect error 24: Incorrect number of function parameters
x = dbfseek()               # expect error 24: Incorrect number of function parameters
x = dbfdelete()             # expect error 24: Incorrect number of function parameters
x = dbfnumrecords()         # expect error 24: Incorrect number of function parameters
x = dbfnumfields()          # expect error 24: Incorrect number of function parameters
x = dbffieldnames()         # expect error 24: Incorrect number of function parameters
print "on"                  # expect: on
