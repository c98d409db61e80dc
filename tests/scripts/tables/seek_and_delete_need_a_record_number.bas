library "include/field.bas"

h = dbfcreate("t", Field("A", "C", 4, 0))
x = dbfseek(h)              # expect error 24: Incorrect number of function parameters
x = dbfdelete(h)            # expect error 24: Incorrect number of function parameters
x = dbfseek(99)             # expect error 24: Incorrect number of function parameters
x = dbfdelete(99)           # expect error 24: Incorrect number of function parameters
print "on"                  # expect: on
end
