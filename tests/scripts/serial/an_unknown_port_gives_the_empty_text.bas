print len(comportread(9999))          # expect: 0
print len(comportwrite(9999, "x"))    # expect: 0
print comportclose(9999)              # expect: False
