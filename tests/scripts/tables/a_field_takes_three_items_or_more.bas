library "include/field.bas"

dim two[2]
two[0] = "A"
two[1] = "C"
x = dbfcreate("t", two)                          # expect error 24: Incorrect number of function parameters
print x                                          # expect: -1
x = dbfcreate("t", Field("A", "C", 4, 0), two)   # expect error 24: Incorrect number of function parameters
print x                                          # expect: -1
x = dbfcreate("t", "A")                          # expect error 24: Incorrect number of function parameters
print x                                          # expect: -1
names = findfiles("*.dbf", "")
print names                                      # expect: 
dim three[3]
three[0] = "A"
three[1] = "N"
three[2] = 9
x = dbfcreate("t", three)
print x                                          # expect: 0
dim five[5]
five[0] = "A"
five[1] = "C"
five[2] = 3
five[3] = 0
five[4] = "more"
x = dbfcreate("u", five)
print x                                          # expect: 1
end
