x = dbfread(-1)             # expect error 57: Invalid dBase file handle
x = dbfwrite(-1, 0, "a")    # expect error 57: Invalid dBase file handle
x = dbfappend(-1, "a")      # expect error 57: Invalid dBase file handle
x = dbfseek(-1, 0)          # expect error 57: Invalid dBase file handle
x = dbfdelete(-1, 0)        # expect error 57: Invalid dBase file handle
x = dbfnumrecords(-5)       # expect error 57: Invalid dBase file handle
x = dbfnumfields(-1)        # expect error 57: Invalid dBase file handle
x = dbffieldnames(-1)       # expect error 57: Invalid dBase file handle
print "on"                  # expect: on
