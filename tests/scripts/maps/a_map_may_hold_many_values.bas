map create "m"
for i = 1 to 2000
  call mapset("m", i, i * 2)
next
sum = 0
for i = 1 to 2000
  sum = sum + mapget("m", i)
next
print sum  # expect: 4002000.000000
x = mapgetkeys("m")
print ubound("x"); " "; x[0]; " "; x[1999]  # expect: 2000 1.000000 2000.000000
