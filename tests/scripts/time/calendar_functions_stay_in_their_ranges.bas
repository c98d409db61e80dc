dim v[7]
v[0] = year()
v[1] = month()
v[2] = day()
v[3] = hour()
v[4] = minute()
v[5] = second()
v[6] = weekday()
dim low[7]
dim high[7]
low[0] = 2024
high[0] = 9999
low[1] = 1
high[1] = 12
low[2] = 1
high[2] = 31
low[3] = 0
high[3] = 23
low[4] = 0
high[4] = 59
low[5] = 0
high[5] = 59
low[6] = 1
high[6] = 7
for i = 0 to 6
  if v[i] < low[i] then
    print "too low"
  endif
  if v[i] > high[i] then
    print "too high"
  endif
next
print "checked"   # expect: checked
