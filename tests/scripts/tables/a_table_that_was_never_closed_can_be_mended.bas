library "include/field.bas"

# The header of such a table counts the records of the last time it was closed, here none.
open "t.dbf" for append as 1
x = seek(1, 8)
headerLength = read(1, 1, 2)
x = seek(1, 10)
recordLength = read(1, 1, 2)
count = int((filesize(1) - headerLength) / recordLength)
x = seek(1, 4)
x = write(1, count, 4)
close 1
h = dbfopen("t")
print dbfnumrecords(h)      # expect: 3
x = dbfappend(h, "dddd")
x = dbfclose(h)
h = dbfopen("t")
print dbfnumrecords(h)      # expect: 4
for i = 1 to dbfnumrecords(h)
  r = dbfread(h)
  print r;
next
print ""                    # expect: aaaabbbbccccdddd
end
