# Reading and parsing a text file: the size is the number of its lines.
n = 400000   # size
rows = 0
units = 0
money = 0
pumps = 0
open "lines.txt" for input as 1 text
do while iseof(1) = 0
  row = readline(1)
  p = instr(row, ";")
  name = left(row, p)
  rest = mid(row, p + 1, len(row))
  q = instr(rest, ";")
  count = val(left(rest, q))
  price = val(mid(rest, q + 1, len(rest)))
  rows = rows + 1
  units = units + count
  money = money + price
  if name = "pump" then
    pumps = pumps + count
  endif
loop
close 1
if rows <> n then
  print "the file has another number of lines"
endif
print format(units, "%.0f"); " "; format(money, "%.2f"); " "; format(pumps, "%.0f")
