i = 0
do while i < 2
  i = i + 1
  j = 0
  do while j < 2
    j = j + 1
    print int(i); int(j)
  loop
loop
# expect: 11
# expect: 12
# expect: 21
# expect: 22
