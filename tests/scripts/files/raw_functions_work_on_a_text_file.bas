open "data" as 1 text
print read(1, 2, 1)                                    # expect: 97
print int(getfilepos(1)); int(filesize(1)); iseof(1)   # expect: 23False
