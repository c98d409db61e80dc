open "DATA.TXT" for output as 1
n = write(1, 65, 1)
close 1
r = findfiles("data.*", 0)
print ubound("r"); " "; r   # expect: 1 data.txt
open "data.txt" as 1
print int(filesize(1))      # expect: 1
