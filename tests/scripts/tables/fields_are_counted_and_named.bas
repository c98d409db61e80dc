library "include/field.bas"

h = dbfcreate("t", Field("NAME", "C", 5, 0), Field("A_LONG_NAME", "N", 6, 2), Field("", "L", 1, 0))
print dbfnumfields(h)       # expect: 3
n = dbffieldnames(h)
print ubound("n")           # expect: 3
print Bars(n[0])            # expect: |NAME|
print Bars(n[1])            # expect: |A_LONG_NAME|
print Bars(n[2])            # expect: ||
x = dbfclose(h)
h = dbfopen("t")
n = dbffieldnames(h)
print Bars(n[1])            # expect: |A_LONG_NAM|
end
