# Neither overwrites the other's record nor its count.
dim field[3]
field[0] = "WHAT"
field[1] = "C"
field[2] = 6
a = dbfcreate("t", field)
b = dbfopen("t")
x = dbfappend(a, "a one")
x = dbfappend(b, "b one")
x = dbfappend(a, "a two")
x = dbfappend(a, "a three")
x = dbfappend(b, "b two")
x = dbfclose(b)
x = dbfclose(a)
t = dbfopen("t")
print dbfnumrecords(t)
# expect: 5
for i = 1 to 5
  print dbfread(t)
  # expect: a one 
  # expect: b one 
  # expect: a two 
  # expect: a thre
  # expect: b two 
next
