first = rand(30000)
changed = 0
for i = 1 to 20
  if rand(30000) <> first then
    changed = 1
  endif
next
print changed   # expect: 1.000000
