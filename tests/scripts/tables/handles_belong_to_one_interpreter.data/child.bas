print dbfnumfields(0)
x = dbfclose(0)
