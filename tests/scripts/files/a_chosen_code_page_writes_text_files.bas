# options: --ui=console --on-error=ask --codepage=windows-1252
open "out" for output as 1 text
n = writeline(1, format(228, "%c"))
n = writeline(1, format(8364, "%c"))
n = writeline(1, format(8486, "%c"))
close 1
open "out" as 1
r = read(1, 3, 1)
print r[0]; " "; r[1]; " "; r[2]   # expect: 228 128 63
print iseof(1)                     # expect: True
