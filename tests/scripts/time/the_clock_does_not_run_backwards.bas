d = day()
a = hour() * 3600 + minute() * 60 + second()
for i = 1 to 500
  x = sqr(i)
next
b = hour() * 3600 + minute() * 60 + second()
if d <> day() then
  b = b + 86400
endif
if b => a then
  print "forward"   # expect: forward
endif
