open "data" as 1
close "1"                # expect error 31: Invalid argument type
print int(filesize(1))   # expect: 3
close 1.9
x = filesize(1)          # expect error 49: Invalid file handle
