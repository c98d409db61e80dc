print dbfnumrecords(-1)  # problem: value-kind@7
