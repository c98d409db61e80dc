n = 0
do while n < 3
  n = n + 1
  print n
loop
# expect: 1.000000
# expect: 2.000000
# expect: 3.000000
print "on"          # expect: on
