library "include/field.bas"

h = dbfcreate("t", Field("A", "C", 5, 0))
call dbfappend(h, "one")
call DbfAppend(h, "two")
print DBFNUMRECORDS(h)      # expect: 2
call dbfseek(-1, 0)         # expect error 57: Invalid dBase file handle
call dbfclose(h)
print dbfnumrecords(h)      # expect: 0
end
