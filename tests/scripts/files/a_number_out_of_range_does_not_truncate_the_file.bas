open "data" for output as 257   # expect error 46: File number is out of valid range
open "data" as 1
print int(filesize(1))          # expect: 3
