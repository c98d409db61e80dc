open "data" as 0           # expect error 46: File number is out of valid range
open "data" as 257         # expect error 46: File number is out of valid range
open "data" as -1          # expect error 46: File number is out of valid range
open "data" as 0.9         # expect error 46: File number is out of valid range
open "data" as 65537       # expect error 46: File number is out of valid range
open "data" as 1
print int(filesize(1))     # expect: 3
open "data" as 256
print int(filesize(256))   # expect: 3
open "data" as 256.9
print int(filesize(256))   # expect: 3
