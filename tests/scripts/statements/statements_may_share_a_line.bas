x = 1 : y = 2 : print x + y  # expect: 3.000000
x = 3 y = 4 print x + y      # expect: 7.000000
