# options: --ui=console --on-error=ask --codepage=windows-1252
open "data" as 1 text
x = readline(1)
print len(x)   # expect: 4
print x        # expect: äÃ¤€
