for i = "2" to "3x"
  print i
next
# expect: 2.000000
# expect: 3.000000
