dim t[12]
t[0] = 0
t[1] = 3
t[2] = 2
t[3] = 5
t[4] = 0
t[5] = 3
t[6] = 5
t[7] = 1
t[8] = 4
t[9] = 6
t[10] = 2
t[11] = 4
d = 0
do while d <> day()
  d = day()
  m = month()
  y = year()
  w = weekday()
loop
if m < 3 then
  y = y - 1
endif
s = y + int(y / 4) - int(y / 100) + int(y / 400) + t[m - 1] + d
s = s - int(s / 7) * 7
if w = s + 1 then
  print "agrees"   # expect: agrees
endif
