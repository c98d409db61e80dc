# Shell sort of 16,000 numbers in a global array, repeated.
n = 45   # size
count = 16000
global Items[count]
seed = 42
total = 0
for turn = 1 to n
  for i = 0 to count - 1
    seed = seed * 3877 + 29573
    seed = seed - int(seed / 139968) * 139968
    Items[i] = seed
  next
  call sortitems(count)
  total = total + Items[0] + Items[count / 2] + Items[count - 1]
next
print format(total, "%.0f")
end

sub sortitems(count)
  gap = 1
  do while gap < count
    gap = gap * 3 + 1
  loop
  do while gap > 1
    gap = int(gap / 3)
    for i = gap to count - 1
      moving = Items[i]
      j = i - gap
      spot = i
      do while j => 0
        if Items[j] > moving then
          Items[spot] = Items[j]
          spot = j
          j = j - gap
        else
          j = -1
        endif
      loop
      Items[spot] = moving
    next
  loop
endsub
