# Text: append, format, single characters, search, replace.
n = 4500   # size
commas = 0
found = 0
length = 0
for turn = 1 to n
  s = ""
  for i = 1 to 100
    s = s + format(turn + i, "%d") + ","
  next
  for p = 0 to len(s) - 1
    if mid(s, p, 1) = "," then
      commas = commas + 1
    endif
  next
  for i = 10 to 100
    found = found + instr(s, format(turn + i, "%d") + ",")
  next
  t = replace(s, ",", "; ")
  length = length + len(t) + len(left(t, 7)) + len(right(t, 5))
next
print format(commas, "%.0f"); " "; format(found, "%.0f"); " "; format(length, "%.0f")
