library "include/field.bas"

h = dbfcreate("t", Field("A", "C", 2, 0), Field("B", "C", 2, 0))
x = dbfappend(h, "a", "b")
x = dbfwrite(h, 0, "c")     # expect error 24: Incorrect number of function parameters
print x                     # expect: 0
x = dbfappend(h, "c")       # expect error 24: Incorrect number of function parameters
print x                     # expect: 0
x = dbfwrite(h)             # expect error 24: Incorrect number of function parameters
print x                     # expect: 0
x = dbfappend(h)            # expect error 24: Incorrect number of function parameters
print x                     # expect: 0
print dbfnumrecords(h)      # expect: 1
x = dbfseek(h, 0)
r = dbfread(h)
print r[0] + "|" + r[1]     # expect: a |b 
end
