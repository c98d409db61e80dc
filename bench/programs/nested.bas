# Nested counted loops with arithmetic in the innermost one.
n = 35000   # size
sum = 0
for i = 1 to n
  for j = 1 to 100
    for k = 1 to 10
      sum = sum + i * j - k * 2
    next
  next
next
print format(sum, "%.0f")
