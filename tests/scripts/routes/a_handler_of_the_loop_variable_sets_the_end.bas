event create changed grow
i = 0
watch create i changed
n = 0
for r = 1 to 3
  last = 1
  for i = 1 to last   # the handler runs before the end value is read
    n = n + 1
  next
next
print n   # expect: 12.000000
end
sub grow(v)
  last__#1 = 4
endsub
