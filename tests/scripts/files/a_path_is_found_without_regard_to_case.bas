open "BOX\inner/DATA.txt" as 1
print int(filesize(1))   # expect: 3
open "box/INNER/data.TXT" for append as 2
print int(filesize(2))   # expect: 3
