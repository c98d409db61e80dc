# options: --ui=console --on-error=ask --codepage=windows-1252
print "é"           # expect: Ã©
