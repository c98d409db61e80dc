# The loop runs long before somebody watches the array, and goes on when nobody does any more.
dim list[4]
global changes
changes = 0
event create changed count_change
for turn = 1 to 6
  if turn = 3 then
    watch create list changed
  endif
  if turn = 5 then
    watch remove list
  endif
  for i = 0 to 3
    list[i] = turn * 10 + i
  next
  print format(turn, "%d"); " "; format(list[3], "%d"); " "; format(changes, "%d")
next
# An array made smaller and larger again in the middle of a loop.
dim list[1]
print format(list[0], "%d")
for i = 0 to 2
  dim list[i + 2]
  list[i + 1] = i
  list[0] = list[0] + list[i + 1]
next
print format(list[0], "%d")
list[9] = 1   # expect error 36: Array index is out of bounds
end
sub count_change(v)
  changes = changes + 1
endsub
