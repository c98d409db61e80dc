library "include/field.bas"

# options: --ui=console --on-error=ask --codepage=windows-1251
h = dbfcreate("t", Field("A", "C", 4, 0))
x = dbfappend(h, format(1044, "%c") + format(1072, "%c"))
x = dbfseek(h, 0)
r = dbfread(h)
print Bars(r)               # expect: |Да  |
x = dbfclose(h)
print right(Shown("t.dbf"), 17)   # expect:  <196><224>  <26>
end
