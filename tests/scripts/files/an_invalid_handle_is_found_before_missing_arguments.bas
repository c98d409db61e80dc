x = read(1)        # expect error 49: Invalid file handle
x = writeline(1)   # expect error 49: Invalid file handle
