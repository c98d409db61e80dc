open "out" for output as 1 text
print int(writeline(1, ""))   # expect: 1
print int(filesize(1))        # expect: 0
