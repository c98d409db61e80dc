open "data" as 1
print int(seek(1, 2))      # expect: 2
print read(1, 1, 1)        # expect: 99
print int(seek(1, 0))      # expect: 0
print read(1, 1, 1)        # expect: 97
print int(seek(1, 1.9))    # expect: 1
print int(getfilepos(1))   # expect: 1
