open "data" as 1
print read(1, 1, 1, 5, 6)                                      # expect: 97
print int(filesize(1, 2)); iseof(1, 2); int(getfilepos(1, 2)); int(seek(1, 2, 3))   # expect: 3False12
