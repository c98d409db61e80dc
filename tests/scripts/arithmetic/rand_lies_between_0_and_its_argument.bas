outside = 0
zeros = 0
for i = 1 to 2000
  r = rand(10)
  if r < 0 then
    outside = outside + 1
  endif
  if r > 10 then
    outside = outside + 1
  endif
  if r = 0 then
    zeros = zeros + 1
  endif
next
print outside      # expect: 0.000000
if zeros < 400 then
  print "varied"   # expect: varied
endif
