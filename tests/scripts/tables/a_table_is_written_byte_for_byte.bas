library "include/field.bas"

h = dbfcreate("t", Field("NAME", "C", 5, 0), Field("PRICE", "N", 6, 2))
x = dbfappend(h, "bolt", "1.5")
x = dbfclose(h)
# Today's date stands in bytes 1 to 3.
open "t.dbf" as 1
x = seek(1, 4)
bytes = read(1, 118, 1)
print iseof(1)              # expect: True
close 1
open "rest" for output as 1
x = write(1, bytes, 1)
close 1
print Shown("rest")
# expect: <1><0><0><0>a<0><24><0><0><0><0><0><0><0><0><0><0><0><0><0><0><0><0><0><0><0><0><0>NAME<0><0><0><0><0><0><0>C<0><0><0><0><5><0><0><0><0><0><0><0><0><0><0><0><0><0><0><0>PRICE<0><0><0><0><0><0>N<0><0><0><0><18><2><0><0><0><0><0><0><0><0><0><0><0><0><0><0><13> bolt 1.50              <26>
end
