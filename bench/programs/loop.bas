# Counted loops and accumulation.
n = 40000000   # size
sum = 0
for i = 1 to n
  sum = sum + i
next
count = 0
total = 0
do while count < n
  count = count + 1
  total = total + 3
loop
print format(sum, "%.0f"); " "; format(total, "%.0f")
