open "data" as 1 text
n = 0
do while iseof(1) = 0
  n = n + val(readline(1))
loop
print n   # expect: 6.000000
