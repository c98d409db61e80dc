print dbfnumrecords(0)         # expect: 0
print dbfnumfields(3)          # expect: 0
print dbfwrite(3, 0, "a")      # expect: 0
print dbfappend(3, "a")        # expect: 0
print dbfwrite(3)              # expect: 0
x = dbfread(3)
print x                        # expect: 
x = dbfseek(3, 0)
print x                        # expect: 
x = dbfdelete(3, 0)
print x                        # expect: 
x = dbffieldnames(3)
print x                        # expect: 
print dbfclose(3)              # expect: False
